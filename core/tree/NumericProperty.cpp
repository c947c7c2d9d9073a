#include "core/tree/NumericProperty.h"

#include "core/tree/NodeFactory.h"

namespace ZemTree {

namespace {

[[maybe_unused]] const bool registered = NodeFactory::registerType<NumericProperty>();

} // namespace

NumericProperty::NumericProperty(const std::string& id, const LocalString& description, const LocalString& secondText,
                                 double value)
    : TypedProperty<double>(id, description, secondText, value)
{
}

} // namespace ZemTree
