#pragma once

#include "core/device/IBinaryStateChannel.h"

namespace ZemDevice {

// A binary channel of the virtual layout, the level at which tests and units address the test set.
class IVirtualChannel : public virtual IBinaryStateChannel {};

} // namespace ZemDevice
