#pragma once

#include "core/device/AnalogPhasor.h"
#include "core/device/IVirtualGroup.h"

#include <sigc++/signal.h>

#include <chrono>
#include <cstddef>
#include <vector>

namespace ZemDevice {

// A group of analog outputs of the virtual layout: one phasor per channel, set by the test, read by the relay.
class IVirtualAnalogOutputGroup : public virtual IVirtualGroup {
public:
    using Clock = std::chrono::steady_clock;
    // The moment of the change, taken when it was stored.
    using SignalChanged = sigc::signal<void, Clock::time_point>;

    // Throws std::out_of_range for a channel behind the group. Safe from any thread.
    virtual AnalogPhasor getPhasor(std::size_t channel) const = 0;
    virtual std::vector<AnalogPhasor> getPhasors() const = 0;
    // Stores and emits when the phasor differs. Throws std::out_of_range for a channel behind the group.
    virtual void setPhasor(std::size_t channel, const AnalogPhasor& phasor) = 0;
    // Sets all channels at once with one signal. Throws std::logic_error, changing nothing, when the count
    // differs from the group's.
    virtual void setPhasors(const std::vector<AnalogPhasor>& phasors) = 0;
    virtual Clock::time_point getLastChangeTime() const = 0;
    // Fires on the thread that changed the phasors, after they are stored, once per real change.
    virtual SignalChanged& getSignalChanged() = 0;
};

} // namespace ZemDevice
