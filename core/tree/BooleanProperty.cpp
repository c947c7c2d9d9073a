#include "core/tree/BooleanProperty.h"

#include "core/tree/NodeFactory.h"

namespace ZemTree {

namespace {

[[maybe_unused]] const bool registered = NodeFactory::registerType<BooleanProperty>();

} // namespace

BooleanProperty::BooleanProperty(const std::string& id, const LocalString& description, const LocalString& secondText,
                                 bool value)
    : TypedProperty<bool>(id, description, secondText, value)
{
}

} // namespace ZemTree
