#include "core/common/FiguresDrawManager.h"

#include "core/common/PointsSequence.h"

#include <cairomm/context.h>
#include <cairomm/surface.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace Zem {

namespace {

const char* const FontFamily = "DejaVu Sans";
// The share of the data span left free on each side of the axes.
constexpr double MarginShare = 0.05;
// Cairo keeps coordinates in 24.8 fixed point; anything drawn stays well inside that.
constexpr double PixelLimit = 1e6;
constexpr double Pi = 3.14159265358979323846;

// A range of finite values; empty while min is above max.
struct Range {
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();

    void add(double value)
    {
        if (!std::isfinite(value))
            return;
        min = std::min(min, value);
        max = std::max(max, value);
    }
    bool isEmpty() const { return !(min <= max); }
};

bool isFinitePoint(const PointF& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

void addFigureRange(const Figure& figure, Range& x, Range& y)
{
    if (const auto* const sequence = dynamic_cast<const PointsSequence*>(&figure)) {
        // A point is drawn only with both coordinates finite, so only such points take room.
        for (const PointF& point : sequence->getPoints()) {
            if (isFinitePoint(point)) {
                x.add(point.x);
                y.add(point.y);
            }
        }
        return;
    }
    float minX = std::numeric_limits<float>::infinity();
    float maxX = -std::numeric_limits<float>::infinity();
    float minY = minX;
    float maxY = maxX;
    figure.getRangeXY(minX, maxX, minY, maxY);
    x.add(minX);
    x.add(maxX);
    y.add(minY);
    y.add(maxY);
}

// The extent of an axis: no data gives 0..1, a single value is widened around itself, a real span gets a margin.
Range finishRange(Range range)
{
    if (range.isEmpty())
        return Range{0.0, 1.0};
    const double span = range.max - range.min;
    const double magnitude = std::max(std::fabs(range.min), std::fabs(range.max));
    if (span <= magnitude * 1e-12 || span == 0.0) {
        const double centre = range.min / 2 + range.max / 2;
        const double half = centre == 0.0 ? 1.0 : std::fabs(centre) * 0.1;
        return Range{centre - half, centre + half};
    }
    return Range{range.min - span * MarginShare, range.max + span * MarginShare};
}

struct Ticks {
    std::vector<double> values;
    std::vector<std::string> labels;
};

std::string trimMantissaZeros(const std::string& text)
{
    const std::size_t exponentAt = text.find('e');
    std::string mantissa = text.substr(0, exponentAt);
    if (mantissa.find('.') != std::string::npos) {
        while (!mantissa.empty() && mantissa.back() == '0')
            mantissa.pop_back();
        if (!mantissa.empty() && mantissa.back() == '.')
            mantissa.pop_back();
    }
    if (exponentAt == std::string::npos)
        return mantissa;
    // "e+07" reads better as "e7", "e-07" as "e-7".
    std::string exponent = text.substr(exponentAt + 1);
    const bool negative = !exponent.empty() && exponent[0] == '-';
    if (!exponent.empty() && (exponent[0] == '-' || exponent[0] == '+'))
        exponent.erase(0, 1);
    exponent.erase(0, std::min(exponent.find_first_not_of('0'), exponent.size() - 1));
    return mantissa + "e" + (negative ? "-" : "") + exponent;
}

// The text of a tick value whose step is a multiple of 10^exponent. Classic locale, so always a decimal point.
std::string formatTick(double value, int exponent, bool scientific)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    if (value == 0.0)
        return "0";
    if (scientific) {
        const int valueExponent = static_cast<int>(std::floor(std::log10(std::fabs(value))));
        stream << std::scientific << std::setprecision(std::clamp(valueExponent - exponent, 0, 16)) << value;
        return trimMantissaZeros(stream.str());
    }
    stream << std::fixed << std::setprecision(std::max(0, -exponent)) << value;
    std::string text = stream.str();
    // Never "-0" or "-0.00": a value that rounds to zero is shown as a plain zero.
    if (text.find_first_not_of("-0.") == std::string::npos)
        return "0";
    return text;
}

// Round ticks (1, 2 or 5 times a power of ten) over [min, max], about `wanted` of them.
Ticks makeTicks(double min, double max, int wanted)
{
    Ticks ticks;
    const double span = max - min;
    if (!(span > 0.0) || !std::isfinite(span))
        return ticks;
    const double rawStep = span / std::max(wanted, 1);
    int exponent = static_cast<int>(std::floor(std::log10(rawStep)));
    const double fraction = rawStep / std::pow(10.0, exponent);
    // The round step nearest to the wanted one; the caller asks again with fewer when labels collide.
    int factor = 10;
    if (fraction < 1.5)
        factor = 1;
    else if (fraction < 3.0)
        factor = 2;
    else if (fraction < 7.0)
        factor = 5;
    if (factor == 10) {
        factor = 1;
        ++exponent;
    }
    const double step = factor * std::pow(10.0, exponent);
    if (!(step > 0.0) || !std::isfinite(step))
        return ticks;
    const double first = std::ceil(min / step);
    const double last = std::floor(max / step);
    // Far from zero the tick indices would lose their integer precision; a sane axis never gets there.
    if (!(first <= last) || last - first > 1000 || std::fabs(first) > 1e15 || std::fabs(last) > 1e15)
        return ticks;

    const double magnitude = std::max(std::fabs(min), std::fabs(max));
    // Plain decimals while they stay short; tiny or huge values, or a step of many decimals, in powers of ten.
    const bool scientific = magnitude >= 1e7 || magnitude < 1e-4 || exponent < -12;
    for (double index = first; index <= last; index += 1.0) {
        double value = index * step;
        if (std::fabs(value) < step * 1e-6)
            value = 0.0;
        ticks.values.push_back(value);
        ticks.labels.push_back(formatTick(value, exponent, scientific));
    }
    return ticks;
}

// Valid UTF-8 is kept as it is; any malformed byte becomes '?', because cairo refuses the whole text otherwise.
std::string sanitizeUtf8(const std::string& text)
{
    std::string result;
    result.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t length = 0;
        unsigned int codePoint = 0;
        if (lead < 0x80) {
            length = 1;
            codePoint = lead;
        }
        else if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
            codePoint = lead & 0x1Fu;
        }
        else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
            codePoint = lead & 0x0Fu;
        }
        else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
            codePoint = lead & 0x07u;
        }
        bool valid = length > 0 && i + length <= text.size();
        for (std::size_t k = 1; valid && k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0u) != 0x80u)
                valid = false;
            codePoint = (codePoint << 6) | (next & 0x3Fu);
        }
        // Overlong forms, surrogates and code points past U+10FFFF are malformed too.
        if (valid
            && ((length == 3 && codePoint < 0x800) || (length == 4 && codePoint < 0x10000)
                || (codePoint >= 0xD800 && codePoint <= 0xDFFF) || codePoint > 0x10FFFF))
            valid = false;
        if (valid && codePoint != 0) {
            result.append(text, i, length);
            i += length;
        }
        else {
            result += '?';
            ++i;
        }
    }
    return result;
}

// Drops whole characters from the end until the text, with an ellipsis, fits in `width`.
std::string fitText(const Cairo::RefPtr<Cairo::Context>& context, const std::string& text, double width)
{
    Cairo::TextExtents extents;
    context->get_text_extents(text, extents);
    if (extents.x_advance <= width)
        return text;
    const std::string ellipsis = "\xE2\x80\xA6";
    // The longest prefix of whole characters that fits, found by bisection over the character starts; the text
    // is valid UTF-8 here, so every byte that is not a continuation byte starts a character.
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0u) != 0x80u)
            starts.push_back(i);
    }
    std::size_t fitting = 0; // a count of characters
    std::size_t tooMany = starts.size();
    while (tooMany - fitting > 1) {
        const std::size_t middle = fitting + (tooMany - fitting) / 2;
        context->get_text_extents(text.substr(0, starts[middle]) + ellipsis, extents);
        if (extents.x_advance <= width)
            fitting = middle;
        else
            tooMany = middle;
    }
    return text.substr(0, fitting < starts.size() ? starts[fitting] : text.size()) + ellipsis;
}

void setColor(const Cairo::RefPtr<Cairo::Context>& context, Color color)
{
    context->set_source_rgba(color.r / 255.0, color.g / 255.0, color.b / 255.0, color.a / 255.0);
}

double limitPixel(double value)
{
    return std::clamp(value, -PixelLimit, PixelLimit);
}

double textWidth(const Cairo::RefPtr<Cairo::Context>& context, const std::string& text)
{
    Cairo::TextExtents extents;
    context->get_text_extents(text, extents);
    return extents.x_advance;
}

struct LegendEntry {
    std::string text;
    const PointsSequence* sequence = nullptr;
};

// Everything of one picture that depends on its size and content; computed before anything is drawn.
class Renderer {
public:
    Renderer(const std::map<std::string, std::unique_ptr<Figure>>& figures, const std::string& horizontalHeader,
             const std::string& verticalHeader, int width, int height,
             const std::map<std::string, std::string>& legendLabels)
        : _figures(figures), _legendLabels(legendLabels), _horizontalHeader(sanitizeUtf8(horizontalHeader)),
          _verticalHeader(sanitizeUtf8(verticalHeader)), _width(width), _height(height),
          _scale(std::clamp(std::min(width / 800.0, height / 600.0), 0.6, 4.0))
    {
    }

    void render(const Cairo::RefPtr<Cairo::Context>& context, FiguresImage& image)
    {
        _context = context;
        _context->select_font_face(FontFamily, Cairo::FONT_SLANT_NORMAL, Cairo::FONT_WEIGHT_NORMAL);
        _computeRanges();
        _layout();
        image.axisX = FiguresAxis{_x.min, _x.max, _xTicks.values, _xTicks.labels};
        image.axisY = FiguresAxis{_y.min, _y.max, _yTicks.values, _yTicks.labels};
        image.plotLeft = _left;
        image.plotTop = _top;
        image.plotWidth = _plotWidth;
        image.plotHeight = _plotHeight;

        _context->set_source_rgb(1.0, 1.0, 1.0);
        _context->paint();
        _drawGrid();
        _drawFigures();
        _drawFrameAndLabels();
        _drawCaptions();
        _drawLegend();
    }

private:
    double _toPixelX(double x) const { return limitPixel(_left + (x - _x.min) / (_x.max - _x.min) * _plotWidth); }
    double _toPixelY(double y) const { return limitPixel(_top + (_y.max - y) / (_y.max - _y.min) * _plotHeight); }

    void _computeRanges()
    {
        Range x;
        Range y;
        for (const auto& entry : _figures) {
            if (entry.second)
                addFigureRange(*entry.second, x, y);
        }
        _x = finishRange(x);
        _y = finishRange(y);
        for (const auto& entry : _figures) {
            LegendEntry legend;
            const auto label = _legendLabels.find(entry.first);
            legend.text = sanitizeUtf8(label != _legendLabels.end() ? label->second : entry.first);
            legend.sequence = dynamic_cast<const PointsSequence*>(entry.second.get());
            if (legend.sequence != nullptr)
                _legend.push_back(legend);
        }
    }

    void _layout()
    {
        const double padding = 8.0 * _scale;
        _tickLength = 4.0 * _scale;
        _context->set_font_size(_tickFontSize());
        Cairo::FontExtents tickFont;
        _context->get_font_extents(tickFont);
        _context->set_font_size(_captionFontSize());
        Cairo::FontExtents captionFont;
        _context->get_font_extents(captionFont);
        const double captionHeight = captionFont.ascent + captionFont.descent;

        _top = padding + tickFont.ascent / 2;
        const double bottomMargin = padding + (_horizontalHeader.empty() ? 0.0 : captionHeight + padding / 2)
                                    + tickFont.ascent + tickFont.descent + _tickLength + padding / 2;
        _plotHeight = std::max(8.0, _height - _top - bottomMargin);
        _yTicks = makeTicks(_y.min, _y.max, std::max(2, static_cast<int>(_plotHeight / (50.0 * _scale))));

        _context->set_font_size(_tickFontSize());
        double labelWidth = 0.0;
        for (const std::string& label : _yTicks.labels)
            labelWidth = std::max(labelWidth, textWidth(_context, label));
        _left = padding + (_verticalHeader.empty() ? 0.0 : captionHeight + padding / 2) + labelWidth + _tickLength
                + padding / 2;

        double rightMargin = padding * 3;
        _legendWidth = 0.0;
        if (!_legend.empty()) {
            _context->set_font_size(_legendFontSize());
            double widest = 0.0;
            for (const LegendEntry& entry : _legend)
                widest = std::max(widest, textWidth(_context, entry.text));
            _legendWidth = std::min(widest + _legendSwatchWidth() + 3 * padding, _width / 3.0);
            rightMargin = _legendWidth + 2 * padding;
        }
        _plotWidth = std::max(8.0, _width - _left - rightMargin);

        // Fewer x ticks when their labels would run into each other.
        _context->set_font_size(_tickFontSize());
        int wanted = std::max(2, static_cast<int>(_plotWidth / (90.0 * _scale)));
        for (;;) {
            _xTicks = makeTicks(_x.min, _x.max, wanted);
            double widest = 0.0;
            for (const std::string& label : _xTicks.labels)
                widest = std::max(widest, textWidth(_context, label));
            const double spacing = _xTicks.values.size() > 1
                                       ? _plotWidth * (_xTicks.values[1] - _xTicks.values[0]) / (_x.max - _x.min)
                                       : _plotWidth;
            if (wanted <= 2 || widest + padding <= spacing)
                break;
            --wanted;
        }
    }

    void _drawGrid()
    {
        _context->set_line_width(1.0);
        _context->set_source_rgb(0.88, 0.88, 0.88);
        for (const double value : _xTicks.values) {
            const double x = std::round(_toPixelX(value)) + 0.5;
            _context->move_to(x, _top);
            _context->line_to(x, _top + _plotHeight);
        }
        for (const double value : _yTicks.values) {
            const double y = std::round(_toPixelY(value)) + 0.5;
            _context->move_to(_left, y);
            _context->line_to(_left + _plotWidth, y);
        }
        _context->stroke();

        // The zero lines matter most in the R-X plane, so they stand out from the grid.
        _context->set_source_rgb(0.6, 0.6, 0.6);
        if (_x.min < 0.0 && _x.max > 0.0) {
            const double x = std::round(_toPixelX(0.0)) + 0.5;
            _context->move_to(x, _top);
            _context->line_to(x, _top + _plotHeight);
        }
        if (_y.min < 0.0 && _y.max > 0.0) {
            const double y = std::round(_toPixelY(0.0)) + 0.5;
            _context->move_to(_left, y);
            _context->line_to(_left + _plotWidth, y);
        }
        _context->stroke();
    }

    void _drawFigures()
    {
        _context->save();
        _context->rectangle(_left, _top, _plotWidth, _plotHeight);
        _context->clip();
        _context->set_line_join(Cairo::LINE_JOIN_ROUND);
        _context->set_line_cap(Cairo::LINE_CAP_ROUND);
        for (const LegendEntry& entry : _legend) {
            const PointsSequence& sequence = *entry.sequence;
            setColor(_context, sequence.getColor());
            if (sequence.getIsLinesVisible())
                _drawLines(sequence);
            if (sequence.getIsMarkersVisible())
                _drawMarkers(sequence);
        }
        _context->restore();
    }

    // A closed sequence whose points are all finite is stroked as one closed path; a gap leaves it open.
    void _drawLines(const PointsSequence& sequence)
    {
        _context->set_line_width(1.5 * _scale);
        bool isOpen = false;
        bool isWhole = true;
        for (const PointF& point : sequence.getPoints()) {
            if (!isFinitePoint(point)) {
                isOpen = false;
                isWhole = false;
                continue;
            }
            const double x = _toPixelX(point.x);
            const double y = _toPixelY(point.y);
            if (isOpen)
                _context->line_to(x, y);
            else
                _context->move_to(x, y);
            isOpen = true;
        }
        if (sequence.getIsClosed() && isWhole && sequence.getPoints().size() > 2)
            _context->close_path();
        _context->stroke();
    }

    void _drawMarkers(const PointsSequence& sequence)
    {
        const double radius = 3.0 * _scale;
        for (const PointF& point : sequence.getPoints()) {
            if (!isFinitePoint(point))
                continue;
            const double x = _toPixelX(point.x);
            const double y = _toPixelY(point.y);
            _context->move_to(x + radius, y);
            _context->arc(x, y, radius, 0.0, 2 * Pi);
            _context->close_path();
        }
        _context->fill();
    }

    void _drawFrameAndLabels()
    {
        _context->set_line_width(1.0);
        _context->set_source_rgb(0.2, 0.2, 0.2);
        _context->rectangle(std::round(_left) + 0.5, std::round(_top) + 0.5, std::round(_plotWidth),
                            std::round(_plotHeight));
        const double bottom = std::round(_top) + std::round(_plotHeight) + 0.5;
        const double left = std::round(_left) + 0.5;
        for (const double value : _xTicks.values) {
            const double x = std::round(_toPixelX(value)) + 0.5;
            _context->move_to(x, bottom);
            _context->line_to(x, bottom + _tickLength);
        }
        for (const double value : _yTicks.values) {
            const double y = std::round(_toPixelY(value)) + 0.5;
            _context->move_to(left, y);
            _context->line_to(left - _tickLength, y);
        }
        _context->stroke();

        _context->set_font_size(_tickFontSize());
        Cairo::FontExtents font;
        _context->get_font_extents(font);
        for (std::size_t i = 0; i < _xTicks.values.size(); ++i) {
            const double width = textWidth(_context, _xTicks.labels[i]);
            _context->move_to(_toPixelX(_xTicks.values[i]) - width / 2, bottom + _tickLength + 2 + font.ascent);
            _context->show_text(_xTicks.labels[i]);
        }
        for (std::size_t i = 0; i < _yTicks.values.size(); ++i) {
            const double width = textWidth(_context, _yTicks.labels[i]);
            _context->move_to(left - _tickLength - 3 - width, _toPixelY(_yTicks.values[i]) + font.ascent / 2 - 1);
            _context->show_text(_yTicks.labels[i]);
        }
    }

    void _drawCaptions()
    {
        const double padding = 8.0 * _scale;
        _context->set_source_rgb(0.0, 0.0, 0.0);
        _context->set_font_size(_captionFontSize());
        Cairo::FontExtents font;
        _context->get_font_extents(font);
        if (!_horizontalHeader.empty()) {
            const std::string text = fitText(_context, _horizontalHeader, _width - 2 * padding);
            const double width = textWidth(_context, text);
            const double x =
                std::clamp(_left + _plotWidth / 2 - width / 2, padding, std::max(padding, _width - padding - width));
            _context->move_to(x, _height - padding - font.descent);
            _context->show_text(text);
        }
        if (!_verticalHeader.empty()) {
            const std::string text = fitText(_context, _verticalHeader, _height - 2 * padding);
            const double width = textWidth(_context, text);
            const double y = std::clamp(_top + _plotHeight / 2 + width / 2,
                                        std::min(_height - padding, padding + width), _height - padding);
            _context->save();
            _context->move_to(padding + font.ascent, y);
            _context->rotate(-Pi / 2);
            _context->show_text(text);
            _context->restore();
        }
    }

    void _drawLegend()
    {
        if (_legend.empty())
            return;
        const double padding = 8.0 * _scale;
        _context->set_font_size(_legendFontSize());
        Cairo::FontExtents font;
        _context->get_font_extents(font);
        const double rowHeight = font.ascent + font.descent + 4 * _scale;
        const double boxLeft = _left + _plotWidth + padding;
        const double boxTop = _top;
        const double textRoom = _legendWidth - _legendSwatchWidth() - 3 * padding;
        const std::size_t fitting =
            static_cast<std::size_t>(std::max(1.0, std::floor((_plotHeight - padding) / rowHeight)));
        // When not all keys fit, the last row tells how many were left out.
        const std::size_t shown = _legend.size() <= fitting ? _legend.size() : fitting - 1;
        const std::size_t rows = _legend.size() <= fitting ? shown : fitting;
        const double boxHeight = rows * rowHeight + padding;

        _context->set_line_width(1.0);
        _context->rectangle(std::round(boxLeft) + 0.5, std::round(boxTop) + 0.5, std::round(_legendWidth),
                            std::round(boxHeight));
        _context->set_source_rgb(1.0, 1.0, 1.0);
        _context->fill_preserve();
        _context->set_source_rgb(0.6, 0.6, 0.6);
        _context->stroke();

        for (std::size_t i = 0; i < shown; ++i) {
            const LegendEntry& entry = _legend[i];
            const double rowTop = boxTop + padding / 2 + i * rowHeight;
            const double middle = rowTop + rowHeight / 2;
            const double swatchLeft = boxLeft + padding;
            const PointsSequence& sequence = *entry.sequence;
            setColor(_context, sequence.getColor());
            if (sequence.getIsLinesVisible() || !sequence.getIsMarkersVisible()) {
                _context->set_line_width(1.5 * _scale);
                _context->move_to(swatchLeft, middle);
                _context->line_to(swatchLeft + _legendSwatchWidth(), middle);
                _context->stroke();
            }
            if (sequence.getIsMarkersVisible()) {
                _context->arc(swatchLeft + _legendSwatchWidth() / 2, middle, 3.0 * _scale, 0.0, 2 * Pi);
                _context->fill();
            }
            _context->set_source_rgb(0.0, 0.0, 0.0);
            _context->move_to(swatchLeft + _legendSwatchWidth() + padding, middle + (font.ascent - font.descent) / 2);
            _context->show_text(fitText(_context, entry.text, textRoom));
        }
        if (shown < _legend.size()) {
            std::ostringstream more;
            more.imbue(std::locale::classic());
            more << "\xE2\x80\xA6 +" << _legend.size() - shown;
            const double rowTop = boxTop + padding / 2 + shown * rowHeight;
            _context->set_source_rgb(0.0, 0.0, 0.0);
            _context->move_to(boxLeft + padding, rowTop + rowHeight / 2 + (font.ascent - font.descent) / 2);
            _context->show_text(more.str());
        }
    }

    double _tickFontSize() const { return 11.0 * _scale; }
    double _captionFontSize() const { return 13.0 * _scale; }
    double _legendFontSize() const { return 11.0 * _scale; }
    double _legendSwatchWidth() const { return 22.0 * _scale; }

    const std::map<std::string, std::unique_ptr<Figure>>& _figures;
    const std::map<std::string, std::string>& _legendLabels;
    const std::string _horizontalHeader;
    const std::string _verticalHeader;
    const int _width;
    const int _height;
    const double _scale;

    Cairo::RefPtr<Cairo::Context> _context;
    std::vector<LegendEntry> _legend;
    Range _x;
    Range _y;
    Ticks _xTicks;
    Ticks _yTicks;
    double _left = 0.0;
    double _top = 0.0;
    double _plotWidth = 0.0;
    double _plotHeight = 0.0;
    double _tickLength = 0.0;
    double _legendWidth = 0.0;
};

FiguresImage renderImage(const std::map<std::string, std::unique_ptr<Figure>>& figures,
                         const std::string& horizontalHeader, const std::string& verticalHeader, int width, int height,
                         const std::map<std::string, std::string>& legendLabels)
{
    FiguresImage image;
    image.width = std::clamp(width, FiguresDrawManager::MinSize, FiguresDrawManager::MaxSize);
    image.height = std::clamp(height, FiguresDrawManager::MinSize, FiguresDrawManager::MaxSize);
    image.pixels.assign(static_cast<std::size_t>(image.width) * image.height, 0u);
    // The surface draws straight into the pixels of the image; ARGB32 rows have no padding.
    const auto surface = Cairo::ImageSurface::create(reinterpret_cast<unsigned char*>(image.pixels.data()),
                                                     Cairo::FORMAT_ARGB32, image.width, image.height, image.width * 4);
    {
        const auto context = Cairo::Context::create(surface);
        Renderer(figures, horizontalHeader, verticalHeader, image.width, image.height, legendLabels)
            .render(context, image);
    }
    surface->flush();
    surface->finish();
    return image;
}

void writePng(const std::string& path, FiguresImage& image)
{
    const std::string failure = "[ZemCommon/FiguresDrawManager] Can't write the image file \"" + path + "\"";
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file.is_open())
        throw std::runtime_error(failure);
    try {
        const auto surface =
            Cairo::ImageSurface::create(reinterpret_cast<unsigned char*>(image.pixels.data()), Cairo::FORMAT_ARGB32,
                                        image.width, image.height, image.width * 4);
        surface->write_to_png_stream([&file](const unsigned char* data, unsigned int length) {
            file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(length));
            return file ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
        });
        surface->finish();
        file.close();
        if (file.fail())
            throw std::runtime_error("close failed");
    }
    catch (const std::exception& error) {
        file.close();
        std::remove(path.c_str());
        throw std::runtime_error(failure + ": " + error.what());
    }
}

} // namespace

FiguresDrawManager* FiguresDrawManager::getInstance()
{
    static FiguresDrawManager instance;
    return &instance;
}

void FiguresDrawManager::setImageSize(int width, int height)
{
    if (width < MinSize || width > MaxSize || height < MinSize || height > MaxSize)
        throw std::logic_error("[ZemCommon/FiguresDrawManager] Image size out of range");
    const std::lock_guard<std::mutex> lock(_mutex);
    _width = width;
    _height = height;
}

int FiguresDrawManager::getImageWidth() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _width;
}

int FiguresDrawManager::getImageHeight() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _height;
}

void FiguresDrawManager::saveToImage(const std::string& path, std::map<std::string, std::unique_ptr<Figure>>& figures,
                                     const std::string& horizontalHeader, const std::string& verticalHeader,
                                     const std::map<std::string, std::string>& legendLabels)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    FiguresImage image = renderImage(figures, horizontalHeader, verticalHeader, _width, _height, legendLabels);
    writePng(path, image);
}

FiguresImage FiguresDrawManager::renderToPixels(const std::map<std::string, std::unique_ptr<Figure>>& figures,
                                                const std::string& horizontalHeader, const std::string& verticalHeader,
                                                int width, int height,
                                                const std::map<std::string, std::string>& legendLabels) const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return renderImage(figures, horizontalHeader, verticalHeader, width, height, legendLabels);
}

} // namespace Zem
