#pragma once

#include "presentation/frame/IView.h"

namespace ZemTree {

// One numeric result as a row of cells.
class IResultNumericView : public virtual Zem::IView {
public:
    virtual void fill(Zem::IView* setting, Zem::IView* measurement, Zem::IView* deviation, Zem::IView* state) = 0;
};

} // namespace ZemTree
