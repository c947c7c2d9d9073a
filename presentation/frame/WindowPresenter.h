#pragma once

#include "presentation/frame/IWindowView.h"
#include "presentation/frame/WindowPresenterBase.h"

namespace Zem {

// A plain window around a content view, closed by its close button.
class WindowPresenter : public WindowPresenterBase<IWindowView> {
public:
    WindowPresenter() = default;

protected:
    std::unique_ptr<IWindowView> _createDefaultView() override;
};

} // namespace Zem
