#pragma once

#include "core/tree/IValueOut.h"

namespace ZemTree {

// A value standing in the tree as a node, reached without knowing its type.
class IUnit : public virtual IValueOut {
public:
    ~IUnit() override = default;
    // Whether the unit keeps its active state when an embedded formula takes over its default.
    virtual void setSaveIsActiveOnEmbedded(bool saveIsActive) = 0;
    virtual bool getSaveIsActiveOnEmbedded() const = 0;
};

} // namespace ZemTree
