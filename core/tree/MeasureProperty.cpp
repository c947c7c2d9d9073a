#include "core/tree/MeasureProperty.h"

#include "core/tree/NodeFactory.h"

namespace ZemTree {

namespace {

[[maybe_unused]] const bool registered = NodeFactory::registerType<MeasureProperty>();

} // namespace

MeasureProperty::MeasureProperty(const std::string& id, const LocalString& description, const LocalString& secondText,
                                 Measure* value)
    : TypedProperty<Measure*>(id, description, secondText, value)
{
}

} // namespace ZemTree
