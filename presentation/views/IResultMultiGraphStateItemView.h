#pragma once

#include "presentation/frame/IView.h"

namespace ZemTree {

// One curve of a graph result in the value column: its key and its verdict.
class IResultMultiGraphStateItemView : public virtual Zem::IView {
public:
    virtual void fill(Zem::IView* key, Zem::IView* state) = 0;
};

} // namespace ZemTree
