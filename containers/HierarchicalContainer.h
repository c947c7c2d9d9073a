#pragma once

#include "containers/UniversalGeneralContainer.h"
#include "evaluation/IHierarchicalContainer.h"

#include <string>

namespace ZemTree {

class HierarchicalCollectionContainer;

// An object of the hierarchy (a substation, a bay, a relay): an item whose `Collection` section holds further
// hierarchical objects, to any depth. Made without arguments it is described by the text `object`.
class HierarchicalContainer : public UniversalGeneralContainer, public virtual IHierarchicalContainer {
public:
    HierarchicalContainer();
    explicit HierarchicalContainer(const std::string& id);
    HierarchicalContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    // Null until the item is filled.
    HierarchicalCollectionContainer* getContainers() const { return _containers; }

protected:
    // An object holds no tests of its own.
    virtual bool _canContainsTest(Node* item);
    // Any hierarchical object; a concrete object narrows it.
    virtual bool _canContainsContainer(Node* item);

    void _fillTemplate() override;

private:
    HierarchicalCollectionContainer* _containers = nullptr;
};

} // namespace ZemTree
