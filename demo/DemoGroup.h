#pragma once

#include "containers/DefendContainer.h"
#include "evaluation/IHierarchicalContainer.h"

#include <string>

namespace ZemTreeDemo {

// An example protection: its tests stand in its `Tests` section, and it can stand in a hierarchical object.
class DemoGroup : public ZemTree::DefendContainer, public virtual ZemTree::IHierarchicalContainer {
public:
    DemoGroup();
    DemoGroup(const std::string& id, const ZemTree::LocalString& description);
};

} // namespace ZemTreeDemo
