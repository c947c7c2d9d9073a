#include "core/tree/BooleanProperty.h"

namespace ZemTree {

BooleanProperty::BooleanProperty(const std::string& id, const LocalString& description, const LocalString& secondText,
                                 bool value)
    : TypedProperty<bool>(id, description, secondText, value)
{
}

} // namespace ZemTree
