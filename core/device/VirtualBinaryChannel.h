#pragma once

#include "core/device/HardwareNode.h"
#include "core/device/IVirtualChannel.h"

#include <cstddef>
#include <mutex>
#include <string>

namespace ZemDevice {

// The state that binary inputs and outputs share: a flag and the moment it last changed, guarded so that any
// thread may read it, and a signal that fires on the thread that changed it.
//
// Signals are plain sigc signals: connect and disconnect slots while no other thread changes the channel. One
// thread at a time changes a channel (the relay its inputs, the test its outputs); the state stays consistent
// even if two do, but their signals would then race.
class VirtualBinaryChannel : public HardwareNode, public virtual IVirtualChannel {
public:
    std::size_t getChannelNumber() const override { return getNumber(); }
    bool getState() const override;
    Clock::time_point getLastChangeTime() const override;
    SignalStateChanged& getSignalStateChanged() override { return _signalStateChanged; }

protected:
    VirtualBinaryChannel(const std::string& idPrefix, const std::string& displayKey, std::size_t number,
                         const std::string& name);

    // Stores the state and emits outside the lock; an equal state does nothing.
    void _changeState(bool state);

private:
    mutable std::mutex _mutex;
    bool _state = false;
    Clock::time_point _lastChangeTime;
    SignalStateChanged _signalStateChanged;
};

} // namespace ZemDevice
