#include "containers/HierarchicalContainer.h"

#include "containers/HierarchicalCollectionContainer.h"
#include "localisation/TreeRelay.h"

#include <memory>

namespace ZemTree {

HierarchicalContainer::HierarchicalContainer()
    : HierarchicalContainer("HierarchicalContainer", LocalString(lng::TreeRelay::get("object")), LocalString::Empty())
{
}

HierarchicalContainer::HierarchicalContainer(const std::string& id)
    : HierarchicalContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

HierarchicalContainer::HierarchicalContainer(const std::string& id, const LocalString& description,
                                             const LocalString& secondText)
    : UniversalGeneralContainer(id, description, secondText)
{
}

bool HierarchicalContainer::_canContainsTest(Node*)
{
    return false;
}

bool HierarchicalContainer::_canContainsContainer(Node*)
{
    return true;
}

void HierarchicalContainer::_fillTemplate()
{
    UniversalGeneralContainer::_fillTemplate();
    _containers = add(std::make_unique<HierarchicalCollectionContainer>(
        "Collection", [this](Node* item) { return _canContainsContainer(item); }));
}

} // namespace ZemTree
