#include "relay/ProtectionContainer.h"

#include "containers/SettingsContainer.h"
#include "values/NumericUnit.h"

#include <memory>

namespace ZemDemo {

using ZemTree::LocalString;

ProtectionContainer::ProtectionContainer() : ZemTree::DefendContainer("ProtectionContainer") {}

ProtectionContainer::ProtectionContainer(const std::string& id, const LocalString& description)
    : ZemTree::DefendContainer(id, description, LocalString::Empty())
{
}

ProtectionContainer::ProtectionContainer(const char* className) : ZemTree::DefendContainer(className) {}

ZemTree::NumericUnit* ProtectionContainer::_addSetting(const std::string& id, const LocalString& description,
                                                       double value, ZemTree::Measure* measure, double minimum)
{
    auto unit = std::make_unique<ZemTree::NumericUnit>(id, description, LocalString::Empty(), value, measure);
    unit->setBounds(minimum, Zem::Nullable<double>());
    return getSettings()->add(std::move(unit));
}

} // namespace ZemDemo
