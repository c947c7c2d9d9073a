#pragma once

#include "presentation/frame/IView.h"

namespace ZemTree {

// One item of a multi numeric result: its key before its result row.
class IResultMultiNumericItemView : public virtual Zem::IView {
public:
    virtual void fill(Zem::IView* key, Zem::IView* result) = 0;
};

} // namespace ZemTree
