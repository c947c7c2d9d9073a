#include "core/tree/MeasureProperty.h"

namespace ZemTree {

MeasureProperty::MeasureProperty(const std::string& id, const LocalString& description, const LocalString& secondText,
                                 Measure* value)
    : TypedProperty<Measure*>(id, description, secondText, value)
{
}

} // namespace ZemTree
