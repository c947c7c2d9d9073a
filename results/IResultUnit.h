#pragma once

#include "values/IUnit.h"

namespace ZemTree {

class ResultBase;

// The road from a test to its outcome: a unit in the test's Results section that holds a result.
class IResultUnit : public virtual IUnit {
public:
    ~IResultUnit() override = default;
    // Returns the unit to "not tested" (a null result).
    virtual void clearResult() = 0;
    // The present result, or null; not owned by the caller.
    virtual ResultBase* getResultValue() = 0;
};

} // namespace ZemTree
