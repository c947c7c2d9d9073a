#pragma once

#include "containers/UnitContainer.h"

#include <string>

namespace ZemTree {

// The `Parameters` section of an item: the units a test or a protection works with.
class ParametersContainer : public UnitContainer {
public:
    ParametersContainer();
    explicit ParametersContainer(const std::string& id);
    ParametersContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    bool hasFixedHierarchicalMode() const override { return true; }
};

} // namespace ZemTree
