#pragma once

#include "presentation/frame/IView.h"

namespace ZemTree {

// A graph result unit's place in the value column.
class IResultMultiGraphUnitView : public virtual Zem::IView {
public:
    virtual void setStateArea(Zem::IView* state) = 0;
};

} // namespace ZemTree
