#pragma once

#include "presentation/frame/IView.h"

#include <cstddef>

namespace Zem {

// A view that shows the views of a list of children in the list's order. It shows them only: each child view is
// owned by its presenter.
class IEditableCollectionView : public virtual IView {
public:
    virtual void clear() = 0;
    virtual void add(IView* view) = 0;
    virtual void insert(std::size_t index, IView* view) = 0;
    virtual void remove(IView* view) = 0;
    // Puts a view that is shown already at `index`.
    virtual void move(std::size_t index, IView* view) = 0;
};

} // namespace Zem
