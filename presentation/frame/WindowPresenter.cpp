#include "presentation/frame/WindowPresenter.h"

#include "presentation/frame/WindowView.h"

namespace Zem {

std::unique_ptr<IWindowView> WindowPresenter::_createDefaultView()
{
    return std::make_unique<WindowView>();
}

} // namespace Zem
