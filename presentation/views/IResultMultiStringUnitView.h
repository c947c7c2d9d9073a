#pragma once

#include "presentation/frame/IView.h"

namespace ZemTree {

// A multi string result unit: the result block, with an empty place where a numeric unit shows its measure.
class IResultMultiStringUnitView : public virtual Zem::IView {
public:
    virtual void fill(Zem::IView* result) = 0;
};

} // namespace ZemTree
