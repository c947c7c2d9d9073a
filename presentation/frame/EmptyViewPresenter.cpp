#include "presentation/frame/EmptyViewPresenter.h"

namespace Zem {

std::unique_ptr<EmptyView> EmptyViewPresenter::_createDefaultView()
{
    return std::make_unique<EmptyView>();
}

} // namespace Zem
