#include "core/tree/MeasureTypeConverter.h"

#include "core/common/ConvertionHelper.h"
#include "core/tree/Measure.h"
#include "core/tree/Measures.h"

namespace ZemTree {

std::string MeasureTypeConverter::toStringData(const Measure* measure)
{
    return measure != nullptr ? measure->getKey() : std::string();
}

Measure* MeasureTypeConverter::fromStringData(const std::string& text)
{
    if (text.empty())
        return nullptr;
    return Measures::find(text);
}

} // namespace ZemTree

namespace Zem::ConvertionDetail {

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

} // namespace Zem::ConvertionDetail
