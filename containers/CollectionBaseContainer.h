#pragma once

#include "containers/TestableContainer.h"

#include <functional>
#include <string>

namespace ZemTree {

// The open section of an item: the list the user adds to. It takes part in the evaluated cascade, so it is
// chosen when all its children are, and an empty one is neither chosen nor unchosen.
class CollectionBaseContainer : public TestableContainer {
public:
    // Asked on every add, after the class test; an empty predicate accepts.
    using Predicate = std::function<bool(Node*)>;

    CollectionBaseContainer();
    explicit CollectionBaseContainer(const std::string& id);
    CollectionBaseContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

protected:
    std::string _getDisplayXmlCurrentDataType() const override { return "CollectionContainer"; }

    // The shared acceptance rule of the collections: not null, of the accepted class, never a root, and then
    // whatever the owner's predicate says.
    static bool _canContainsItem(Node* item, bool isAcceptedClass, const Predicate& predicate);
};

} // namespace ZemTree
