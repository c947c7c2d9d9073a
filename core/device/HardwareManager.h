#pragma once

#include "core/device/HardwareLayout.h"

#include <memory>

namespace ZemDevice {

class HardwareVirtualChannels;

// The simulated test set that a tree's containers are handed: it owns the tree of virtual channels, the root of
// all channel paths. The layout is fixed for the life of the manager; a host that wants another shape makes
// another manager.
class HardwareManager {
public:
    using Layout = HardwareLayout;

    explicit HardwareManager(const Layout& layout = defaultLayout());
    ~HardwareManager();
    HardwareManager(const HardwareManager&) = delete;
    HardwareManager& operator=(const HardwareManager&) = delete;

    // Never null.
    HardwareVirtualChannels* getVirtualChannels() const { return _virtualChannels.get(); }

    // A common small test set: two groups of 8 binary inputs, one group of 8 binary outputs, and three analog
    // output groups of 3 channels each.
    static Layout defaultLayout();

private:
    std::unique_ptr<HardwareVirtualChannels> _virtualChannels;
};

} // namespace ZemDevice
