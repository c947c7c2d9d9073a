#include "containers/DefendGroupContainer.h"

#include "containers/DefendCollectionContainer.h"

#include <memory>

namespace ZemTree {

DefendGroupContainer::DefendGroupContainer() : DefendGroupContainer("DefendGroupContainer") {}

DefendGroupContainer::DefendGroupContainer(const std::string& id)
    : DefendGroupContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

DefendGroupContainer::DefendGroupContainer(const std::string& id, const LocalString& description,
                                           const LocalString& secondText)
    : UniversalGeneralContainer(id, description, secondText)
{
}

bool DefendGroupContainer::_canContainsTest(Node*)
{
    return false;
}

void DefendGroupContainer::_fillTemplate()
{
    UniversalGeneralContainer::_fillTemplate();
    _defends = add(std::make_unique<DefendCollectionContainer>(
        "Defends", [this](Node* item) { return _canContainsDefend(item); }));
}

} // namespace ZemTree
