#include "relay/ContactsProtection.h"

#include "containers/SettingsContainer.h"
#include "core/tree/Measures.h"
#include "values/NumericUnit.h"

namespace ZemDemo {

using ZemTree::LocalString;

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
