#pragma once

#include "presentation/frame/IConfirmWindowView.h"
#include "presentation/frame/WindowPresenterBase.h"

namespace Zem {

// A window whose content the user confirms with OK or drops with Cancel, Escape or the close button. After the
// closed signal, isConfirmed() tells which.
class ConfirmWindowPresenter : public WindowPresenterBase<IConfirmWindowView> {
public:
    ConfirmWindowPresenter() = default;

    bool isConfirmed() const { return _isConfirmed; }

protected:
    std::unique_ptr<IConfirmWindowView> _createDefaultView() override;
    void _onViewInited() override;

private:
    void _onConfirmed();

    bool _isConfirmed = false;
};

} // namespace Zem
