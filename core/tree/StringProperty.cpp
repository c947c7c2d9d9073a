#include "core/tree/StringProperty.h"

#include "core/tree/NodeFactory.h"

namespace ZemTree {

namespace {

[[maybe_unused]] const bool registered = NodeFactory::registerType<StringProperty>();

} // namespace

StringProperty::StringProperty(const std::string& id, const LocalString& description, const LocalString& secondText,
                               const std::string& value, bool readOnly)
    : TypedProperty<std::string>(id, description, secondText, value), _isReadOnly(readOnly)
{
    if (readOnly)
        getIsEditable().set(Zem::NullableBool(false));
}

} // namespace ZemTree
