#include "results/ResultBase.h"

#include "localisation/TreeRelay.h"

namespace ZemTree {

std::string ResultBase::getStateDescription() const
{
    if (!_stateMessage.empty())
        return _stateMessage;
    return lng::TreeRelay::get(getResultStateKey(_state));
}

void ResultBase::_setState(ResultState state, const std::string& message)
{
    _state = state;
    _stateMessage = message;
}

} // namespace ZemTree
