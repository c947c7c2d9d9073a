#include "core/tree/Deviation.h"

#include "core/common/ConvertionHelper.h"

#include <cmath>

namespace ZemTree {

namespace {

std::string signedText(double value)
{
    if (std::isnan(value))
        return "nan";
    // The magnitude is written alone: the number form keeps all its digits only for non-negative values.
    const std::string magnitude = Zem::convertToString<double, true>(std::fabs(value), 2);
    if (magnitude == "0")
        return magnitude;
    return (value < 0.0 ? "-" : "+") + magnitude;
}

} // namespace

Deviation::Deviation(const Zem::Nullable<double>& relative, const Zem::Nullable<double>& absolute)
    : _relative(relative), _absolute(absolute)
{
}

std::string Deviation::getDisplayValue() const
{
    std::string text;
    if (_relative.hasValue())
        text = signedText(_relative.getValue()) + " %";
    if (_absolute.hasValue()) {
        if (!text.empty())
            text += " / ";
        text += signedText(_absolute.getValue());
    }
    return text;
}

bool Deviation::operator==(const Deviation& other) const
{
    return _relative == other._relative && _absolute == other._absolute;
}

} // namespace ZemTree
