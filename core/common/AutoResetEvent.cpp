#include "core/common/AutoResetEvent.h"

namespace Zem {

void AutoResetEvent::set()
{
    // Notify while still holding the lock: a released waiter often destroys the event at once,
    // and the condition variable must not be touched after that.
    const std::lock_guard<std::mutex> lock(_mutex);
    _isSet = true;
    _condition.notify_one();
}

void AutoResetEvent::reset()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _isSet = false;
}

void AutoResetEvent::waitOne()
{
    std::unique_lock<std::mutex> lock(_mutex);
    _condition.wait(lock, [this] { return _isSet; });
    _isSet = false;
}

bool AutoResetEvent::waitOne(std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(_mutex);
    if (!_condition.wait_for(lock, timeout, [this] { return _isSet; }))
        return false;
    _isSet = false;
    return true;
}

} // namespace Zem
