#include "containers/HierarchicalCollectionContainer.h"

#include "evaluation/IHierarchicalContainer.h"
#include "localisation/TreeRelay.h"

#include <utility>

namespace ZemTree {

HierarchicalCollectionContainer::HierarchicalCollectionContainer()
    : HierarchicalCollectionContainer("HierarchicalCollectionContainer", nullptr)
{
}

HierarchicalCollectionContainer::HierarchicalCollectionContainer(const std::string& id, Predicate canContains)
    : HierarchicalCollectionContainer(id, LocalString(lng::TreeRelay::get("elements")), LocalString::Empty(),
                                      std::move(canContains))
{
}

HierarchicalCollectionContainer::HierarchicalCollectionContainer(const std::string& id, const LocalString& description,
                                                                 const LocalString& secondText, Predicate canContains)
    : CollectionBaseContainer(id, description, secondText), _canContains(std::move(canContains))
{
}

bool HierarchicalCollectionContainer::canContains(Node* item)
{
    return _canContainsItem(item, dynamic_cast<IHierarchicalContainer*>(item) != nullptr, _canContains);
}

} // namespace ZemTree
