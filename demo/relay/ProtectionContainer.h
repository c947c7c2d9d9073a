#pragma once

#include "containers/DefendContainer.h"
#include "evaluation/IHierarchicalContainer.h"

#include <string>

namespace ZemDemo {

// A protection of the sample project: its tests stand in its `Tests` section, and it stands in a substation.
class ProtectionContainer : public ZemTree::DefendContainer, public virtual ZemTree::IHierarchicalContainer {
public:
    ProtectionContainer();
    ProtectionContainer(const std::string& id, const ZemTree::LocalString& description);
};

} // namespace ZemDemo
