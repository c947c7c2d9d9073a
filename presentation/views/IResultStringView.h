#pragma once

#include "presentation/frame/IView.h"

namespace ZemTree {

// One string result as a row of cells.
class IResultStringView : public virtual Zem::IView {
public:
    virtual void fill(Zem::IView* setting, Zem::IView* measurement, Zem::IView* state) = 0;
};

} // namespace ZemTree
