#pragma once

#include "evaluation/ITestableContainer.h"

namespace ZemTree {

class ActionUnit;

// A node with actions that run when execution enters it and when execution leaves it.
class ITestActionContainer : public virtual ITestableContainer {
public:
    ~ITestActionContainer() override = default;

    // The action run on entering, or null when the node has none.
    virtual ActionUnit* getActionBefore() = 0;
    // The action run on leaving, or null when the node has none.
    virtual ActionUnit* getActionAfter() = 0;
};

} // namespace ZemTree
