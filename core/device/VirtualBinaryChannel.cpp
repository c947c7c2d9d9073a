#include "core/device/VirtualBinaryChannel.h"

namespace ZemDevice {

VirtualBinaryChannel::VirtualBinaryChannel(const std::string& idPrefix, const std::string& displayKey,
                                           std::size_t number, const std::string& name)
    : HardwareNode(idPrefix + " " + std::to_string(number), displayKey, number, name), _lastChangeTime(Clock::now())
{
    // A channel is a leaf of the fixed hardware.
    _lockContainer();
}

bool VirtualBinaryChannel::getState() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _state;
}

IBinaryStateChannel::Clock::time_point VirtualBinaryChannel::getLastChangeTime() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _lastChangeTime;
}

void VirtualBinaryChannel::_changeState(bool state)
{
    Clock::time_point changed;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (_state == state)
            return;
        _state = state;
        _lastChangeTime = Clock::now();
        changed = _lastChangeTime;
    }
    // Outside the lock: a slot may read the channel again.
    _signalStateChanged.emit(state, changed);
}

} // namespace ZemDevice
