#pragma once

#include "core/device/IChannelGroup.h"

#include <cstddef>

namespace ZemDevice {

// A group of the virtual layout.
class IVirtualGroup : public virtual ZemDriver::IChannelGroup {
public:
    // The 1-based place of the group in its section.
    virtual std::size_t getGroupNumber() const = 0;
};

} // namespace ZemDevice
