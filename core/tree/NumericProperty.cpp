#include "core/tree/NumericProperty.h"

namespace ZemTree {

NumericProperty::NumericProperty(const std::string& id, const LocalString& description, const LocalString& secondText,
                                 double value)
    : TypedProperty<double>(id, description, secondText, value)
{
}

} // namespace ZemTree
