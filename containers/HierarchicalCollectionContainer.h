#pragma once

#include "containers/CollectionBaseContainer.h"

#include <string>

namespace ZemTree {

// The `Collection` section of a hierarchical object: the objects below it, filtered by the owner's predicate.
// Its description defaults to the text `elements`.
class HierarchicalCollectionContainer : public CollectionBaseContainer {
public:
    HierarchicalCollectionContainer();
    HierarchicalCollectionContainer(const std::string& id, Predicate canContains);
    HierarchicalCollectionContainer(const std::string& id, const LocalString& description,
                                    const LocalString& secondText, Predicate canContains);

    // A hierarchical object that is not a root and that the predicate accepts.
    bool canContains(Node* item) override;

private:
    Predicate _canContains;
};

} // namespace ZemTree
