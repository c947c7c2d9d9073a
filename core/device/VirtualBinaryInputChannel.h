#pragma once

#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/VirtualBinaryChannel.h"

#include <cstddef>
#include <string>

namespace ZemDevice {

// A binary input of the simulated test set, "Input N" in its group. The relay (or a test standing in for it)
// drives it; its signal fires on the driving thread.
class VirtualBinaryInputChannel : public VirtualBinaryChannel, public virtual IVirtualBinaryInputChannel {
public:
    explicit VirtualBinaryInputChannel(std::size_t number, const std::string& name = std::string());

    void drive(bool state) override { _changeState(state); }
};

} // namespace ZemDevice
