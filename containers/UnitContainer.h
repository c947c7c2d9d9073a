#pragma once

#include "containers/UnitableStructureContainer.h"

#include <string>

namespace ZemTree {

// A section of an item that holds units: values with a type, and the core's own units (actions, separators,
// strings), which stand in sections beside them.
class UnitContainer : public UnitableStructureContainer {
public:
    UnitContainer();
    explicit UnitContainer(const std::string& id);
    UnitContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    bool canContains(Node* item) override;
    // Fixes the section: the user may change the units' values, not the set of units.
    void lockContainer() { _lockContainer(); }

protected:
    std::string _getDisplayXmlCurrentDataType() const override { return "ValueContainer"; }
};

} // namespace ZemTree
