#pragma once

#include "evaluation/ITestableContainer.h"

namespace ZemTree {

// Marks a container that stands for an object of the hierarchy rather than for a test or a protection.
class IHierarchicalContainer : public virtual ITestableContainer {
public:
    ~IHierarchicalContainer() override = default;
};

} // namespace ZemTree
