#pragma once

#include "containers/CollectionBaseContainer.h"

#include <string>

namespace ZemTree {

// The `Defends` section of a group of protections: the protections, filtered by the group's predicate.
class DefendCollectionContainer : public CollectionBaseContainer {
public:
    DefendCollectionContainer();
    DefendCollectionContainer(const std::string& id, Predicate canContains);
    DefendCollectionContainer(const std::string& id, const LocalString& description, const LocalString& secondText,
                              Predicate canContains);

    // A protection that is not a root and that the predicate accepts.
    bool canContains(Node* item) override;

protected:
    std::string _getDisplayXmlCurrentDataType() const override { return "DefendCollectionContainer"; }

private:
    Predicate _canContains;
};

} // namespace ZemTree
