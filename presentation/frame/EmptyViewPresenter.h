#pragma once

#include "presentation/frame/EmptyView.h"
#include "presentation/frame/PresenterBase.h"

namespace Zem {

// Stands for a hidden item in a list of presenters, so that indexes of presenters and items stay equal.
class EmptyViewPresenter : public PresenterBase<EmptyView> {
public:
    EmptyViewPresenter() = default;

protected:
    std::unique_ptr<EmptyView> _createDefaultView() override;
};

} // namespace Zem
