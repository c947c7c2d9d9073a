#pragma once

#include "core/device/IBinaryInputChannel.h"
#include "core/device/IVirtualChannel.h"

namespace ZemDevice {

// A binary input of the virtual layout: the relay drives it, the test reads it and listens to it.
class IVirtualBinaryInputChannel : public virtual ZemRelay::IBinaryInputChannel, public virtual IVirtualChannel {};

} // namespace ZemDevice
