#include "results/graph/GraphManagerHelper.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/PointsSequence.h"
#include "core/common/StringHelper.h"
#include "core/common/XmlInclude.h"

#include <cmath>
#include <limits>
#include <utility>

namespace ZemTree {

// The pairing is fixed by the files and views that already use these keys: the first line ends in "снизу".
const char* const GraphManagerHelper::FigureKeyUp = "Форма характеристики снизу";
const char* const GraphManagerHelper::FigureKeyDown = "Форма характеристики сверху";

namespace {

std::string numberText(float value)
{
    return Zem::convertToString<double, true>(static_cast<double>(value), 2);
}

} // namespace

float GraphManagerHelper::toFloat(double value)
{
    // A finite double outside the floats' range has no float to round to, and a plain cast would be undefined.
    // Below half a float step above the largest float, rounding gives that float; from there on, the infinity.
    static const double overflow = std::ldexp(1.0, 128) - std::ldexp(1.0, 103);
    const double magnitude = std::fabs(value);
    if (magnitude > std::numeric_limits<float>::max() && magnitude <= std::numeric_limits<double>::max()) {
        const float rounded =
            magnitude < overflow ? std::numeric_limits<float>::max() : std::numeric_limits<float>::infinity();
        return value < 0.0 ? -rounded : rounded;
    }
    return static_cast<float>(value);
}

std::string GraphManagerHelper::settingsLineToText(const std::vector<Zem::PointF>& line)
{
    std::string text;
    for (const Zem::PointF& point : line) {
        text += numberText(point.x);
        text += ';';
        text += numberText(point.y);
        text += ';';
    }
    return text;
}

std::vector<Zem::PointF> GraphManagerHelper::settingsLineFromText(const std::string& text)
{
    std::vector<Zem::PointF> line;
    const std::vector<std::string> parts = Zem::StringHelper::split(text, ';');
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        if (parts[i].empty())
            continue;
        double x = 0.0;
        double y = 0.0;
        if (!Zem::tryConvert<double, true>(parts[i], x) || !Zem::tryConvert<double, true>(parts[i + 1], y))
            continue;
        line.emplace_back(toFloat(x), toFloat(y));
    }
    return line;
}

void GraphManagerHelper::writeSettingsLine(xmlpp::Element* element, const std::string& name,
                                           const std::vector<Zem::PointF>& line)
{
    xmlpp::Element* child = element->add_child(name);
    const std::string text = settingsLineToText(line);
    if (!text.empty())
        child->add_child_text(text);
}

void GraphManagerHelper::readSettingsLine(const xmlpp::Element* element, const std::string& name,
                                          std::vector<Zem::PointF>& target)
{
    target.clear();
    if (element == nullptr)
        return;
    const auto* child = dynamic_cast<const xmlpp::Element*>(element->get_first_child(name));
    if (child == nullptr)
        return;
    const xmlpp::TextNode* text = child->get_child_text();
    if (text == nullptr)
        return;
    target = settingsLineFromText(text->get_content());
}

void GraphManagerHelper::addCurveFigures(const std::map<std::string, std::vector<Zem::Point>>& points,
                                         std::map<std::string, std::unique_ptr<Zem::Figure>>& figures)
{
    for (const auto& entry : points) {
        if (figures.count(entry.first) != 0)
            continue;
        std::vector<Zem::PointF> curve;
        curve.reserve(entry.second.size());
        for (const Zem::Point& point : entry.second)
            curve.push_back(toPointF(point));
        figures.emplace(entry.first, std::make_unique<Zem::PointsSequence>(std::move(curve), Zem::Color(0, 0, 255, 255),
                                                                           "", true, false));
    }
}

void GraphManagerHelper::addSettingFigure(std::map<std::string, std::unique_ptr<Zem::Figure>>& figures,
                                          const std::string& key, const std::vector<Zem::PointF>& line,
                                          Zem::Color color, bool isMarkersVisible, bool isClosed)
{
    if (figures.count(key) != 0)
        return;
    figures.emplace(key, std::make_unique<Zem::PointsSequence>(line, color, "", isMarkersVisible, true, isClosed));
}

} // namespace ZemTree
