#include "results/ResultStateFold.h"

namespace ZemTree {

bool ResultStateFold::add(const ResultBase& item)
{
    if (_isStopped)
        return false;
    _hasItems = true;
    switch (item.getState()) {
    case ResultState::Ok:
        break;
    case ResultState::NotOk:
        // The first rejected item names the reason.
        if (_state != ResultState::NotOk) {
            _state = ResultState::NotOk;
            _message = item.getStateDescription();
        }
        break;
    case ResultState::Error:
        _state = ResultState::Error;
        _message = item.getStateDescription();
        _isStopped = true;
        break;
    default:
        _state = ResultState::Error;
        _isStopped = true;
        break;
    }
    return !_isStopped;
}

} // namespace ZemTree
