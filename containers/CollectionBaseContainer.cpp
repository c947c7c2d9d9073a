#include "containers/CollectionBaseContainer.h"

#include "core/tree/IRootContainer.h"

namespace ZemTree {

CollectionBaseContainer::CollectionBaseContainer() : CollectionBaseContainer("CollectionBaseContainer") {}

CollectionBaseContainer::CollectionBaseContainer(const std::string& id)
    : CollectionBaseContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

CollectionBaseContainer::CollectionBaseContainer(const std::string& id, const LocalString& description,
                                                 const LocalString& secondText)
    : TestableContainer(id, description, secondText)
{
}

bool CollectionBaseContainer::_canContainsItem(Node* item, bool isAcceptedClass, const Predicate& predicate)
{
    if (item == nullptr || !isAcceptedClass)
        return false;
    if (dynamic_cast<IRootContainer*>(item) != nullptr)
        return false;
    return !predicate || predicate(item);
}

} // namespace ZemTree
