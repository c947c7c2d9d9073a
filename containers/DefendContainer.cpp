#include "containers/DefendContainer.h"

#include "containers/TestCollectionContainer.h"
#include "containers/TestContainer.h"

#include <memory>

namespace ZemTree {

DefendContainer::DefendContainer() : DefendContainer("DefendContainer") {}

DefendContainer::DefendContainer(const std::string& id)
    : DefendContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

DefendContainer::DefendContainer(const std::string& id, const LocalString& description, const LocalString& secondText)
    : UniversalGeneralContainer(id, description, secondText)
{
}

bool DefendContainer::_canContainsTest(Node* item)
{
    return item != nullptr && dynamic_cast<TestContainer*>(item) != nullptr;
}

void DefendContainer::_fillTemplate()
{
    UniversalGeneralContainer::_fillTemplate();
    _tests =
        add(std::make_unique<TestCollectionContainer>("Tests", [this](Node* item) { return _canContainsTest(item); }));
}

} // namespace ZemTree
