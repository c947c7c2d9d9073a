#pragma once

#include "containers/UniversalGeneralContainer.h"

#include <string>

namespace ZemTree {

class TestCollectionContainer;

// One protection function: an item whose `Tests` section holds its tests. A concrete protection narrows what
// the section accepts by overriding _canContainsTest, which the section asks on every add.
class DefendContainer : public UniversalGeneralContainer {
public:
    DefendContainer();
    explicit DefendContainer(const std::string& id);
    DefendContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    // Null until the item is filled.
    TestCollectionContainer* getTests() const { return _tests; }

protected:
    // Any test.
    virtual bool _canContainsTest(Node* item);

    void _fillTemplate() override;

private:
    TestCollectionContainer* _tests = nullptr;
};

} // namespace ZemTree
