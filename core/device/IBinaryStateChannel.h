#pragma once

#include "core/device/IChannel.h"

#include <sigc++/signal.h>

#include <chrono>

namespace ZemDevice {

// What every binary channel of the test set shows: its present state and when it last changed.
class IBinaryStateChannel : public virtual ZemRelay::IChannel {
public:
    using Clock = std::chrono::steady_clock;
    // The new state and the moment of the change, taken when the change was stored.
    using SignalStateChanged = sigc::signal<void, bool, Clock::time_point>;

    // Safe from any thread.
    virtual bool getState() const = 0;
    // The moment of the last change; the moment the channel was made while it never changed.
    virtual Clock::time_point getLastChangeTime() const = 0;
    // Fires on the thread that changed the state, after the change is stored, once per real change.
    virtual SignalStateChanged& getSignalStateChanged() = 0;
};

} // namespace ZemDevice
