#pragma once

#include <string>

namespace ZemDevice {
class HardwareManager;
class IBinaryStateChannel;
class IVirtualAnalogOutputGroup;
class IVirtualBinaryInputChannel;
class IVirtualBinaryOutputChannel;
} // namespace ZemDevice

namespace ZemTree {

class Contact;

// Maps the channel paths that units keep in their data to the channels of a test set. A path is relative to the
// virtual channels of the hardware ("BinaryInputs/Group 1/Input 3"). Nothing here throws or keeps state: a
// lookup that finds nothing gives null or the empty text, and the units turn that into an error of their value.
//
// A channel type names the family of channels a contact unit works with: "hardwareBinaryOutput" and
// "testObjectBinaryInput" (an input of the relay is driven by an output of the test set) mean the binary
// outputs, any other text, the empty one included, the binary inputs.
class HardwareBasedUnitHelper {
public:
    HardwareBasedUnitHelper() = delete;

    static const char* const HardwareBinaryInputType;
    static const char* const HardwareBinaryOutputType;
    static const char* const TestObjectBinaryInputType;

    // Whether `channelType` means the binary outputs of the test set.
    static bool isOutputChannelType(const std::string& channelType);

    static ZemDevice::IVirtualBinaryInputChannel* getHardwareBinaryInputChannel(ZemDevice::HardwareManager* hardware,
                                                                                const std::string& path);
    static ZemDevice::IVirtualBinaryOutputChannel* getHardwareBinaryOutputChannel(ZemDevice::HardwareManager* hardware,
                                                                                  const std::string& path);
    static ZemDevice::IVirtualAnalogOutputGroup* getHardwareAnalogOutputGroup(ZemDevice::HardwareManager* hardware,
                                                                              const std::string& path);

    // The channel that the contact's path names in the family of `channelType`, or null.
    static ZemDevice::IBinaryStateChannel* getValueHardwareChannel(ZemDevice::HardwareManager* hardware,
                                                                   const Contact* contact,
                                                                   const std::string& channelType);

    // The path of the channel at the zero-based `index` of the family, counted through all groups in order as one
    // sequence; empty without hardware or behind the last channel.
    static std::string getDefaultHardwareChannelPath(ZemDevice::HardwareManager* hardware,
                                                     const std::string& channelType, long index);
    // The path of the analog output group at the zero-based `index`; empty without hardware or behind the last.
    static std::string getDefaultHardwareAnalogOutputGroupPath(ZemDevice::HardwareManager* hardware, long index);
};

} // namespace ZemTree
