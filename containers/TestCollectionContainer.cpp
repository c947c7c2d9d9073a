#include "containers/TestCollectionContainer.h"

#include "containers/TestContainer.h"
#include "core/tree/IRootContainer.h"

#include <utility>

namespace ZemTree {

TestCollectionContainer::TestCollectionContainer() : TestCollectionContainer("TestCollectionContainer", nullptr) {}

TestCollectionContainer::TestCollectionContainer(const std::string& id, Predicate canContains)
    : TestCollectionContainer(id, LocalString::Empty(), LocalString::Empty(), std::move(canContains))
{
}

TestCollectionContainer::TestCollectionContainer(const std::string& id, const LocalString& description,
                                                 const LocalString& secondText, Predicate canContains)
    : TestableContainer(id, description, secondText), _canContains(std::move(canContains))
{
    _initHierarchicalMode(ContainerHierarchicalMode::Parameters);
}

bool TestCollectionContainer::canContains(Node* item)
{
    if (item == nullptr || dynamic_cast<TestContainer*>(item) == nullptr)
        return false;
    if (dynamic_cast<IRootContainer*>(item) != nullptr)
        return false;
    return !_canContains || _canContains(item);
}

} // namespace ZemTree
