#pragma once

#include "presentation/frame/IPresenter.h"

#include <vector>

namespace ZemTree {

// The items of a multi string result, one above the other.
class IResultMultiStringView : public virtual Zem::IView {
public:
    // Replaces all shown items with the views of `items`, in order.
    virtual void setItems(const std::vector<Zem::IPresenter*>& items) = 0;
};

} // namespace ZemTree
