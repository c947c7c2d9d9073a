#pragma once

#include "core/device/HardwareLayout.h"
#include "core/device/HardwareNode.h"
#include "core/device/IVirtualGroup.h"
#include "core/device/VirtualBinaryInputChannel.h"
#include "core/device/VirtualBinaryOutputChannel.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ZemDevice {

// A group of binary channels, "Group N" in its section: an ordered list of its channels, which are also its
// child nodes. Its structure is fixed when it is made.
template <class TChannel> class VirtualBinaryGroup : public HardwareNode, public virtual IVirtualGroup {
public:
    VirtualBinaryGroup(std::size_t number, const HardwareGroupLayout& layout)
        : HardwareNode("Group " + std::to_string(number), "Hardware.group", number, layout.name)
    {
        _channels.reserve(layout.channelCount);
        for (std::size_t index = 0; index < layout.channelCount; ++index) {
            const std::string name = index < layout.channelNames.size() ? layout.channelNames[index] : std::string();
            _channels.push_back(add(std::make_unique<TChannel>(index + 1, name)));
        }
        // Channels are the fixed hardware: nobody adds or removes any afterwards.
        _lockContainer();
    }

    std::size_t getGroupNumber() const override { return getNumber(); }
    std::size_t getChannelCount() const override { return _channels.size(); }

    // The channels in order; the pointers live as long as the group.
    const std::vector<TChannel*>& channels() const { return _channels; }
    // Throws std::out_of_range for an index behind the group.
    TChannel* getChannel(std::size_t index) const { return _channels.at(index); }

private:
    std::vector<TChannel*> _channels;
};

using VirtualBinaryInputGroup = VirtualBinaryGroup<VirtualBinaryInputChannel>;
using VirtualBinaryOutputGroup = VirtualBinaryGroup<VirtualBinaryOutputChannel>;

} // namespace ZemDevice
