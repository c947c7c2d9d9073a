#include "core/device/VirtualAnalogOutputGroup.h"

#include <stdexcept>
#include <string>

namespace ZemDevice {

VirtualAnalogOutputGroup::VirtualAnalogOutputGroup(std::size_t number, const HardwareGroupLayout& layout)
    : HardwareNode("Group " + std::to_string(number), "Hardware.group", number, layout.name),
      _channelCount(layout.channelCount), _phasors(layout.channelCount), _lastChangeTime(Clock::now())
{
    _lockContainer();
}

AnalogPhasor VirtualAnalogOutputGroup::getPhasor(std::size_t channel) const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _phasors.at(channel);
}

std::vector<AnalogPhasor> VirtualAnalogOutputGroup::getPhasors() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _phasors;
}

void VirtualAnalogOutputGroup::setPhasor(std::size_t channel, const AnalogPhasor& phasor)
{
    Clock::time_point changed;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (channel >= _phasors.size())
            throw std::out_of_range("VirtualAnalogOutputGroup::setPhasor: channel " + std::to_string(channel)
                                    + " is behind the group of " + std::to_string(_phasors.size()));
        std::vector<AnalogPhasor> phasors = _phasors;
        phasors[channel] = phasor;
        if (!_storeLocked(phasors))
            return;
        changed = _lastChangeTime;
    }
    _signalChanged.emit(changed);
}

void VirtualAnalogOutputGroup::setPhasors(const std::vector<AnalogPhasor>& phasors)
{
    if (phasors.size() != _channelCount)
        throw std::logic_error("The analog output group has " + std::to_string(_channelCount) + " channels, not "
                               + std::to_string(phasors.size()));
    Clock::time_point changed;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (!_storeLocked(phasors))
            return;
        changed = _lastChangeTime;
    }
    _signalChanged.emit(changed);
}

IVirtualAnalogOutputGroup::Clock::time_point VirtualAnalogOutputGroup::getLastChangeTime() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _lastChangeTime;
}

bool VirtualAnalogOutputGroup::_storeLocked(const std::vector<AnalogPhasor>& phasors)
{
    if (phasors == _phasors)
        return false;
    _phasors = phasors;
    _lastChangeTime = Clock::now();
    return true;
}

} // namespace ZemDevice
