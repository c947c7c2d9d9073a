#include "core/tree/StringProperty.h"

namespace ZemTree {

StringProperty::StringProperty(const std::string& id, const LocalString& description, const LocalString& secondText,
                               const std::string& value, bool readOnly)
    : TypedProperty<std::string>(id, description, secondText, value), _isReadOnly(readOnly)
{
    if (readOnly)
        getIsEditable().set(Zem::NullableBool(false));
}

} // namespace ZemTree
