#include "containers/DefendCollectionContainer.h"

#include "containers/DefendContainer.h"

#include <utility>

namespace ZemTree {

DefendCollectionContainer::DefendCollectionContainer() : DefendCollectionContainer("DefendCollectionContainer", nullptr)
{
}

DefendCollectionContainer::DefendCollectionContainer(const std::string& id, Predicate canContains)
    : DefendCollectionContainer(id, LocalString::Empty(), LocalString::Empty(), std::move(canContains))
{
}

DefendCollectionContainer::DefendCollectionContainer(const std::string& id, const LocalString& description,
                                                     const LocalString& secondText, Predicate canContains)
    : CollectionBaseContainer(id, description, secondText), _canContains(std::move(canContains))
{
}

bool DefendCollectionContainer::canContains(Node* item)
{
    return _canContainsItem(item, dynamic_cast<DefendContainer*>(item) != nullptr, _canContains);
}

} // namespace ZemTree
