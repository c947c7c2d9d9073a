#include "core/tree/RangeStructure.h"

#include "core/common/ConvertionHelper.h"

#include <cmath>
#include <locale>
#include <stdexcept>

namespace ZemTree {

RangeStructure RangeStructure::Standart(double low, double high)
{
    if (std::isnan(low) || std::isnan(high))
        throw std::logic_error("[ZemTree/RangeStructure] A bound of a range is not a number");
    RangeStructure range;
    // Equal bounds keep their order, so that [-0;0] reads and writes as it stands.
    range._low = high < low ? high : low;
    range._high = high < low ? low : high;
    range._isEmpty = false;
    return range;
}

bool RangeStructure::contains(double value) const
{
    return !_isEmpty && _low <= value && value <= _high;
}

bool RangeStructure::operator==(const RangeStructure& other) const
{
    if (_isEmpty || other._isEmpty)
        return _isEmpty == other._isEmpty;
    return _low == other._low && _high == other._high;
}

void RangeStructure::operator>>(std::ostringstream& stream) const
{
    if (_isEmpty)
        stream << "[]";
    else
        stream << '[' << boundToText(_low) << ';' << boundToText(_high) << ']';
}

void RangeStructure::operator<<(std::istringstream& stream)
{
    if (!tryParse(stream.str(), *this))
        stream.setstate(std::ios_base::badbit);
}

std::string RangeStructure::boundToText(double value)
{
    // 15 digits show the usual decimal numbers as they were typed; 17 always read back.
    std::string text;
    for (int precision = 15; precision <= 17; ++precision) {
        std::ostringstream stream;
        stream.imbue(std::locale::classic());
        stream.precision(precision);
        stream << value;
        text = stream.str();
        double back = 0.0;
        if (Zem::tryConvert<double, true>(text, back) && back == value)
            break;
    }
    return text;
}

bool RangeStructure::tryParse(const std::string& text, RangeStructure& range)
{
    if (text.size() < 2 || text.front() != '[' || text.back() != ']')
        return false;
    const std::string inner = text.substr(1, text.size() - 2);
    if (inner.empty()) {
        range = RangeStructure();
        return true;
    }
    const std::size_t separator = inner.find(';');
    if (separator == std::string::npos)
        return false;
    const std::string lowText = inner.substr(0, separator);
    const std::string highText = inner.substr(separator + 1);
    // The number reader skips leading blanks; the text form has none anywhere.
    if (lowText.find_first_of(" \t\n\v\f\r") != std::string::npos
        || highText.find_first_of(" \t\n\v\f\r") != std::string::npos)
        return false;
    double low = 0.0;
    double high = 0.0;
    if (!Zem::tryConvert<double, true>(lowText, low) || !Zem::tryConvert<double, true>(highText, high))
        return false;
    if (std::isnan(low) || std::isnan(high) || low > high)
        return false;
    range = Standart(low, high);
    return true;
}

} // namespace ZemTree
