#include "core/device/VirtualBinaryOutputChannel.h"

namespace ZemDevice {

VirtualBinaryOutputChannel::VirtualBinaryOutputChannel(std::size_t number, const std::string& name)
    : VirtualBinaryChannel("Output", "Hardware.output", number, name)
{
}

} // namespace ZemDevice
