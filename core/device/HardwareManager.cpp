#include "core/device/HardwareManager.h"

#include "core/device/HardwareVirtualChannels.h"

namespace ZemDevice {

HardwareManager::HardwareManager(const Layout& layout)
    : _virtualChannels(std::make_unique<HardwareVirtualChannels>(layout))
{
}

HardwareManager::~HardwareManager() = default;

HardwareManager::Layout HardwareManager::defaultLayout()
{
    Layout layout;
    layout.binaryInputGroups = {HardwareGroupLayout{8, "", {}}, HardwareGroupLayout{8, "", {}}};
    layout.binaryOutputGroups = {HardwareGroupLayout{8, "", {}}};
    layout.analogOutputGroups = {HardwareGroupLayout{3, "", {}}, HardwareGroupLayout{3, "", {}},
                                 HardwareGroupLayout{3, "", {}}};
    return layout;
}

} // namespace ZemDevice
