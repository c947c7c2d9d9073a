#pragma once

#include "core/device/IVirtualBinaryOutputChannel.h"
#include "core/device/VirtualBinaryChannel.h"

#include <cstddef>
#include <string>

namespace ZemDevice {

// A binary output of the simulated test set, "Output N" in its group. The test switches it; its signal fires on
// the switching thread.
class VirtualBinaryOutputChannel : public VirtualBinaryChannel, public virtual IVirtualBinaryOutputChannel {
public:
    explicit VirtualBinaryOutputChannel(std::size_t number, const std::string& name = std::string());

    void setState(bool state) override { _changeState(state); }
};

} // namespace ZemDevice
