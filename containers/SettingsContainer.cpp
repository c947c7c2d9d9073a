#include "containers/SettingsContainer.h"

namespace ZemTree {

SettingsContainer::SettingsContainer() : SettingsContainer("SettingsContainer") {}

SettingsContainer::SettingsContainer(const std::string& id)
    : SettingsContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

SettingsContainer::SettingsContainer(const std::string& id, const LocalString& description,
                                     const LocalString& secondText)
    : UnitContainer(id, description, secondText)
{
    _initHierarchicalMode(ContainerHierarchicalMode::Settings);
}

} // namespace ZemTree
