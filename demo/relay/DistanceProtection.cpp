#include "relay/DistanceProtection.h"

#include "containers/SettingsContainer.h"
#include "core/tree/Measures.h"
#include "values/NumericUnit.h"

namespace ZemDemo {

using ZemTree::LocalString;

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

} // namespace ZemDemo
