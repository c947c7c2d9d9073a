#pragma once

#include "containers/CollectionBaseContainer.h"
#include "containers/TestableContainer.h"

#include <functional>
#include <string>

namespace ZemTree {

// The `Tests` section of a protection: the tests, filtered by the protection's predicate.
class TestCollectionContainer : public TestableContainer {
public:
    using Predicate = CollectionBaseContainer::Predicate;

    TestCollectionContainer();
    TestCollectionContainer(const std::string& id, Predicate canContains);
    TestCollectionContainer(const std::string& id, const LocalString& description, const LocalString& secondText,
                            Predicate canContains);

    // A test that is not a root and that the predicate accepts.
    bool canContains(Node* item) override;
    bool hasFixedHierarchicalMode() const override { return true; }

protected:
    std::string _getDisplayXmlCurrentDataType() const override { return "TestCollectionContainer"; }

private:
    Predicate _canContains;
};

} // namespace ZemTree
