#pragma once

#include "containers/UniversalGeneralContainer.h"

#include <string>

namespace ZemTree {

class DefendCollectionContainer;

// A group of protections: an item whose `Defends` section holds protections. Abstract: a concrete group says
// which protections it takes.
class DefendGroupContainer : public UniversalGeneralContainer {
public:
    DefendGroupContainer();
    explicit DefendGroupContainer(const std::string& id);
    DefendGroupContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    // Null until the item is filled.
    DefendCollectionContainer* getDefends() const { return _defends; }

protected:
    // A group holds no tests of its own.
    virtual bool _canContainsTest(Node* item);
    virtual bool _canContainsDefend(Node* item) = 0;

    void _fillTemplate() override;

private:
    DefendCollectionContainer* _defends = nullptr;
};

} // namespace ZemTree
