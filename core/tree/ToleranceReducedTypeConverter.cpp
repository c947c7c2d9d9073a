#include "core/tree/ToleranceReducedTypeConverter.h"

#include "core/tree/ToleranceReduced.h"

#include <cmath>
#include <sstream>

namespace ZemTree {

namespace {

std::string rangeText(const Zem::Nullable<RangeStructure>& range)
{
    if (!range.hasValue())
        return std::string();
    std::ostringstream stream;
    range.getValue() >> stream;
    return stream.str();
}

bool parseRange(const std::string& text, Zem::Nullable<RangeStructure>& range)
{
    if (text.empty()) {
        range = Zem::Nullable<RangeStructure>();
        return true;
    }
    RangeStructure read;
    if (!RangeStructure::tryParse(text, read))
        return false;
    // A deviation range without bounds would admit every measurement.
    if (!read.isEmpty() && !(std::isfinite(read.getLow()) && std::isfinite(read.getHigh())))
        return false;
    range = read;
    return true;
}

} // namespace

std::string ToleranceReducedTypeConverter::toStringData(const ToleranceReduced& tolerance)
{
    return rangeText(tolerance.relative()) + '|' + rangeText(tolerance.absolute());
}

bool ToleranceReducedTypeConverter::fromStringData(const std::string& text, ToleranceReduced& tolerance)
{
    const std::size_t separator = text.find('|');
    if (separator == std::string::npos)
        return false;
    Zem::Nullable<RangeStructure> relative;
    Zem::Nullable<RangeStructure> absolute;
    if (!parseRange(text.substr(0, separator), relative) || !parseRange(text.substr(separator + 1), absolute))
        return false;
    tolerance = ToleranceReduced(relative, absolute);
    return true;
}

} // namespace ZemTree
