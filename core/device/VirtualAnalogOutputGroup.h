#pragma once

#include "core/device/HardwareLayout.h"
#include "core/device/HardwareNode.h"
#include "core/device/IVirtualAnalogOutputGroup.h"

#include <cstddef>
#include <mutex>
#include <vector>

namespace ZemDevice {

// A group of analog outputs of the simulated test set, "Group N" under the analog outputs: one phasor per
// channel, silent at first (amplitude and angle 0, 50 Hz).
//
// The phasors are guarded, so any thread may read them; the signal fires on the thread that changed them. As
// for binary channels, slots are connected while no other thread changes the group, and one thread at a time
// changes it.
class VirtualAnalogOutputGroup : public HardwareNode, public virtual IVirtualAnalogOutputGroup {
public:
    VirtualAnalogOutputGroup(std::size_t number, const HardwareGroupLayout& layout);

    std::size_t getGroupNumber() const override { return getNumber(); }
    std::size_t getChannelCount() const override { return _channelCount; }

    AnalogPhasor getPhasor(std::size_t channel) const override;
    std::vector<AnalogPhasor> getPhasors() const override;
    void setPhasor(std::size_t channel, const AnalogPhasor& phasor) override;
    void setPhasors(const std::vector<AnalogPhasor>& phasors) override;
    Clock::time_point getLastChangeTime() const override;
    SignalChanged& getSignalChanged() override { return _signalChanged; }

private:
    // Stores `phasors` when they differ and returns whether they did; the caller holds the lock.
    bool _storeLocked(const std::vector<AnalogPhasor>& phasors);

    const std::size_t _channelCount;
    mutable std::mutex _mutex;
    std::vector<AnalogPhasor> _phasors;
    Clock::time_point _lastChangeTime;
    SignalChanged _signalChanged;
};

} // namespace ZemDevice
