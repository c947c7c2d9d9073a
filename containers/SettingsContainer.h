#pragma once

#include "containers/UnitContainer.h"

#include <string>

namespace ZemTree {

// The `Settings` section of an item: units that configure it, presented as settings.
class SettingsContainer : public UnitContainer {
public:
    SettingsContainer();
    explicit SettingsContainer(const std::string& id);
    SettingsContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    bool hasFixedHierarchicalMode() const override { return true; }
};

} // namespace ZemTree
