#include "relay/OvercurrentProtection.h"

#include "containers/SettingsContainer.h"
#include "core/tree/Measures.h"
#include "relay/CurveUnit.h"
#include "values/NumericUnit.h"

#include <memory>

namespace ZemDemo {

using ZemTree::LocalString;

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

} // namespace ZemDemo
