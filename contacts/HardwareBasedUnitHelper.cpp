#include "contacts/HardwareBasedUnitHelper.h"

#include "contacts/Contact.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/device/IBinaryStateChannel.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"
#include "core/tree/NodePathHelper.h"

#include <vector>

namespace ZemTree {

namespace {

ZemDevice::HardwareVirtualChannels* channelsOf(ZemDevice::HardwareManager* hardware)
{
    return hardware != nullptr ? hardware->getVirtualChannels() : nullptr;
}

template <class TInterface> TInterface* findChannel(ZemDevice::HardwareManager* hardware, const std::string& path)
{
    ZemDevice::HardwareVirtualChannels* const channels = channelsOf(hardware);
    if (channels == nullptr)
        return nullptr;
    return channels->find<TInterface>(path);
}

// One count runs through all groups, so the index is a place in the flat sequence of channels.
template <class TGroup>
std::string channelPathAt(ZemDevice::HardwareVirtualChannels* channels, const std::vector<TGroup*>& groups, long index)
{
    if (index < 0)
        return std::string();
    long remaining = index;
    for (const TGroup* group : groups) {
        if (group == nullptr)
            continue;
        const long count = static_cast<long>(group->channels().size());
        if (remaining < count)
            return NodePathHelper::getPath(channels, group->channels()[static_cast<std::size_t>(remaining)]);
        remaining -= count;
    }
    return std::string();
}

} // namespace

const char* const HardwareBasedUnitHelper::HardwareBinaryInputType = "hardwareBinaryInput";
const char* const HardwareBasedUnitHelper::HardwareBinaryOutputType = "hardwareBinaryOutput";
const char* const HardwareBasedUnitHelper::TestObjectBinaryInputType = "testObjectBinaryInput";

bool HardwareBasedUnitHelper::isOutputChannelType(const std::string& channelType)
{
    return channelType == HardwareBinaryOutputType || channelType == TestObjectBinaryInputType;
}

ZemDevice::IVirtualBinaryInputChannel*
HardwareBasedUnitHelper::getHardwareBinaryInputChannel(ZemDevice::HardwareManager* hardware, const std::string& path)
{
    return findChannel<ZemDevice::IVirtualBinaryInputChannel>(hardware, path);
}

ZemDevice::IVirtualBinaryOutputChannel*
HardwareBasedUnitHelper::getHardwareBinaryOutputChannel(ZemDevice::HardwareManager* hardware, const std::string& path)
{
    return findChannel<ZemDevice::IVirtualBinaryOutputChannel>(hardware, path);
}

ZemDevice::IVirtualAnalogOutputGroup*
HardwareBasedUnitHelper::getHardwareAnalogOutputGroup(ZemDevice::HardwareManager* hardware, const std::string& path)
{
    return findChannel<ZemDevice::IVirtualAnalogOutputGroup>(hardware, path);
}

ZemDevice::IBinaryStateChannel* HardwareBasedUnitHelper::getValueHardwareChannel(ZemDevice::HardwareManager* hardware,
                                                                                 const Contact* contact,
                                                                                 const std::string& channelType)
{
    if (hardware == nullptr || contact == nullptr)
        return nullptr;
    if (isOutputChannelType(channelType))
        return getHardwareBinaryOutputChannel(hardware, contact->getPath());
    return getHardwareBinaryInputChannel(hardware, contact->getPath());
}

std::string HardwareBasedUnitHelper::getDefaultHardwareChannelPath(ZemDevice::HardwareManager* hardware,
                                                                   const std::string& channelType, long index)
{
    ZemDevice::HardwareVirtualChannels* const channels = channelsOf(hardware);
    if (channels == nullptr)
        return std::string();
    if (isOutputChannelType(channelType))
        return channelPathAt(channels, channels->binaryOutputGroups(), index);
    return channelPathAt(channels, channels->binaryInputGroups(), index);
}

std::string HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(ZemDevice::HardwareManager* hardware,
                                                                             long index)
{
    ZemDevice::HardwareVirtualChannels* const channels = channelsOf(hardware);
    if (channels == nullptr || index < 0)
        return std::string();
    const auto& groups = channels->analogOutputGroups();
    if (static_cast<unsigned long>(index) >= groups.size())
        return std::string();
    return NodePathHelper::getPath(channels, groups[static_cast<std::size_t>(index)]);
}

} // namespace ZemTree
