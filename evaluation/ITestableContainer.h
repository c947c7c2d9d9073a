#pragma once

#include "core/common/Nullable.h"
#include "core/tree/IDescriptionContainer.h"

namespace ZemTree {

// Whatever evaluation can choose to run: a single test or a container of tests.
class ITestableContainer : public virtual IDescriptionContainer {
public:
    ~ITestableContainer() override = default;

    // True or false when the node and everything below it agree, empty when they differ or nothing is chosen.
    virtual Zem::Nullable<bool> getIsEvaluated() = 0;
};

} // namespace ZemTree
