#include "core/tree/MeasureTypeConverter.h"

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
