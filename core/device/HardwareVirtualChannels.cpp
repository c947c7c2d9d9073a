#include "core/device/HardwareVirtualChannels.h"

#include "core/device/HardwareNode.h"

#include <memory>

namespace ZemDevice {

namespace {

// Makes the groups of one section from its layout, in order.
template <class TGroup>
std::vector<TGroup*> fillSection(HardwareNode& section, const std::vector<HardwareGroupLayout>& groups)
{
    std::vector<TGroup*> made;
    made.reserve(groups.size());
    for (std::size_t index = 0; index < groups.size(); ++index)
        made.push_back(section.add(std::make_unique<TGroup>(index + 1, groups[index])));
    return made;
}

} // namespace

const char* const HardwareVirtualChannels::BinaryInputsId = "BinaryInputs";
const char* const HardwareVirtualChannels::BinaryOutputsId = "BinaryOutputs";
const char* const HardwareVirtualChannels::AnalogOutputsId = "AnalogOutputs";

HardwareVirtualChannels::HardwareVirtualChannels(const HardwareLayout& layout) : ZemTree::Node("VirtualChannels")
{
    _binaryInputs = add(std::make_unique<HardwareNode>(BinaryInputsId, "Hardware.binaryInputs", 0, ""));
    _binaryOutputs = add(std::make_unique<HardwareNode>(BinaryOutputsId, "Hardware.binaryOutputs", 0, ""));
    _analogOutputs = add(std::make_unique<HardwareNode>(AnalogOutputsId, "Hardware.analogOutputs", 0, ""));
    _binaryInputGroups = fillSection<VirtualBinaryInputGroup>(*_binaryInputs, layout.binaryInputGroups);
    _binaryOutputGroups = fillSection<VirtualBinaryOutputGroup>(*_binaryOutputs, layout.binaryOutputGroups);
    _analogOutputGroups = fillSection<VirtualAnalogOutputGroup>(*_analogOutputs, layout.analogOutputGroups);
    // Locks this node and every section below it: the hardware's shape is not the user's to change.
    _lockContainer();
    _lockChildContainer(_binaryInputs);
    _lockChildContainer(_binaryOutputs);
    _lockChildContainer(_analogOutputs);
}

} // namespace ZemDevice
