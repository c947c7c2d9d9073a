#pragma once

#include "presentation/frame/IView.h"

namespace Zem {

// The view of an empty place: no widget at all, so a collection view keeps its index and shows nothing.
class EmptyView : public virtual IView {
public:
    EmptyView() = default;
    EmptyView(const EmptyView&) = delete;
    EmptyView& operator=(const EmptyView&) = delete;
};

} // namespace Zem
