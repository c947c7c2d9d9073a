#include "presentation/frame/ConfirmWindowPresenter.h"

#include "presentation/frame/ConfirmWindowView.h"

namespace Zem {

std::unique_ptr<IConfirmWindowView> ConfirmWindowPresenter::_createDefaultView()
{
    return std::make_unique<ConfirmWindowView>();
}

void ConfirmWindowPresenter::_onViewInited()
{
    WindowPresenterBase<IConfirmWindowView>::_onViewInited();
    _view->signalConfirmed.connect([this] { _onConfirmed(); });
}

// A second click after the first closed the window changes nothing.
void ConfirmWindowPresenter::_onConfirmed()
{
    if (isClosed())
        return;
    _isConfirmed = true;
    close();
}

} // namespace Zem
