#pragma once

#include <sigc++/signal.h>

namespace ZemDevice {
class HardwareManager;
}

namespace ZemTree {

// A node that knows the hardware it works with. The signal fires when that hardware is replaced.
class IHardwareContainer {
public:
    virtual ~IHardwareContainer() = default;
    virtual ZemDevice::HardwareManager* getHardware() const = 0;
    sigc::signal<void>& getSignalHardwareChanged() { return _signalHardwareChanged; }

protected:
    sigc::signal<void> _signalHardwareChanged;
};

} // namespace ZemTree
