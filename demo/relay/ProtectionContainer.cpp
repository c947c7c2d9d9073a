#include "relay/ProtectionContainer.h"

#include "containers/SettingsContainer.h"
#include "core/tree/Measures.h"
#include "relay/CurveUnit.h"
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

OvercurrentProtection::OvercurrentProtection() : ProtectionContainer("OvercurrentProtection") {}

OvercurrentProtection::OvercurrentProtection(const std::string& id, const LocalString& description)
    : ProtectionContainer(id, description)
{
}

void OvercurrentProtection::_fillTemplate()
{
    ProtectionContainer::_fillTemplate();
    _pickup = _addSetting("Pickup", LocalString::create("Pickup current", "Ток срабатывания"), 1.0,
                          ZemTree::Measures::Ampere(), 0.001);
    _curve = getSettings()->add(
        std::make_unique<CurveUnit>("Curve", LocalString::create("Curve", "Характеристика"), "standard"));
    _timeMultiplier = _addSetting("TimeMultiplier", LocalString::create("Time multiplier", "Множитель времени"), 0.1,
                                  ZemTree::Measures::None(), 0.001);
}

DistanceProtection::DistanceProtection() : ProtectionContainer("DistanceProtection") {}

DistanceProtection::DistanceProtection(const std::string& id, const LocalString& description)
    : ProtectionContainer(id, description)
{
}

void DistanceProtection::_fillTemplate()
{
    ProtectionContainer::_fillTemplate();
    _reachR = _addSetting("ReachR", LocalString::create("Resistive reach", "Уставка по R"), 10.0,
                          ZemTree::Measures::Ohm(), 0.01);
    _reachX = _addSetting("ReachX", LocalString::create("Reactive reach", "Уставка по X"), 10.0,
                          ZemTree::Measures::Ohm(), 0.01);
    _lineAngle = _addSetting("LineAngle", LocalString::create("Line angle", "Угол линии"), 75.0,
                             ZemTree::Measures::Gradus(), 1.0);
    _lineAngle->setBounds(1.0, 90.0);
}

ContactsProtection::ContactsProtection() : ProtectionContainer("ContactsProtection") {}

ContactsProtection::ContactsProtection(const std::string& id, const LocalString& description)
    : ProtectionContainer(id, description)
{
}

void ContactsProtection::_fillTemplate()
{
    ProtectionContainer::_fillTemplate();
    _delay = _addSetting("Delay", LocalString::create("Follower delay", "Задержка повторителя"), 0.05,
                         ZemTree::Measures::Second(), 0.0);
    _delay->setBounds(0.0, 3600.0);
}

} // namespace ZemDemo
