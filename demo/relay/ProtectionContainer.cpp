#include "relay/ProtectionContainer.h"

namespace ZemDemo {

ProtectionContainer::ProtectionContainer() : ZemTree::DefendContainer("ProtectionContainer") {}

ProtectionContainer::ProtectionContainer(const std::string& id, const ZemTree::LocalString& description)
    : ZemTree::DefendContainer(id, description, ZemTree::LocalString::Empty())
{
}

} // namespace ZemDemo
