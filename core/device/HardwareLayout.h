#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace ZemDevice {

// One group of a test set's layout. `HardwareGroupLayout{8}` is a group of eight channels with the usual texts.
struct HardwareGroupLayout {
    // Channels of a binary group, phasors of an analog group.
    std::size_t channelCount = 0;
    // Shown instead of "Group N"; empty keeps that text.
    std::string name;
    // Shown instead of "Input N" or "Output N", by channel; a missing or empty entry keeps that text.
    std::vector<std::string> channelNames;
};

// The shape of a simulated test set: its groups in order, section by section. Names only change what is shown;
// the ids, and so the channel paths, are always "Group N" and "Input N" or "Output N".
struct HardwareLayout {
    std::vector<HardwareGroupLayout> binaryInputGroups;
    std::vector<HardwareGroupLayout> binaryOutputGroups;
    std::vector<HardwareGroupLayout> analogOutputGroups;
};

} // namespace ZemDevice
