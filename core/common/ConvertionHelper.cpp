#include "core/common/ConvertionHelper.h"

#include "core/tree/Measure.h"
#include "core/tree/MeasureTypeConverter.h"

namespace Zem {
namespace ConvertionDetail {

std::string measureToText(const ZemTree::Measure* measure)
{
    return ZemTree::MeasureTypeConverter::toStringData(measure);
}

bool measureFromText(const std::string& text, ZemTree::Measure*& measure)
{
    ZemTree::Measure* const found = ZemTree::MeasureTypeConverter::fromStringData(text);
    // The empty text is the form of null; any other text must name a known measure.
    if (!found && !text.empty())
        return false;
    measure = found;
    return true;
}

} // namespace ConvertionDetail
} // namespace Zem
