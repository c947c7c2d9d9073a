#pragma once

#include "core/device/IBinaryOutputChannel.h"
#include "core/device/IVirtualChannel.h"

namespace ZemDevice {

// A binary output of the virtual layout: the test switches it, the relay listens to it.
class IVirtualBinaryOutputChannel : public virtual ZemRelay::IBinaryOutputChannel, public virtual IVirtualChannel {};

} // namespace ZemDevice
