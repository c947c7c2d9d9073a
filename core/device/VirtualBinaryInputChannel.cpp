#include "core/device/VirtualBinaryInputChannel.h"

namespace ZemDevice {

VirtualBinaryInputChannel::VirtualBinaryInputChannel(std::size_t number, const std::string& name)
    : VirtualBinaryChannel("Input", "Hardware.input", number, name)
{
}

} // namespace ZemDevice
