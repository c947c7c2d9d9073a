#pragma once

#include "core/tree/IHardwareContainer.h"

namespace ZemTree {

// A hardware container to which the host hands the hardware.
class IEditableHardwareContainer : public virtual IHardwareContainer {
public:
    virtual void setHardware(ZemDevice::HardwareManager* hardware) = 0;
};

} // namespace ZemTree
