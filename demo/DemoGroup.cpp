#include "DemoGroup.h"

#include "core/tree/NodeFactory.h"

namespace ZemTreeDemo {

namespace {

// A saved project names its protections by class.
[[maybe_unused]] const bool registered = ZemTree::NodeFactory::registerType<DemoGroup>();

} // namespace

DemoGroup::DemoGroup() : ZemTree::DefendContainer("DemoGroup") {}

DemoGroup::DemoGroup(const std::string& id, const ZemTree::LocalString& description)
    : ZemTree::DefendContainer(id, description, ZemTree::LocalString::Empty())
{
}

} // namespace ZemTreeDemo
