#include "contacts/HardwareBasedUnitHelper.h"

#include "ContactUnitsTestSupport.h"
#include "contacts/Contact.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/device/IBinaryStateChannel.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using ContactUnitsTest::makeLayout;
using ZemDevice::HardwareGroupLayout;
using ZemDevice::HardwareManager;
using ZemTree::Contact;
using ZemTree::HardwareBasedUnitHelper;

TEST(HardwareBasedUnitHelperTest, DefaultChannelPathCountsThroughAllGroupsOfTheFamily)
{
    // Two input groups of 8, one output group of 8.
    HardwareManager hardware;
    const struct {
        const char* text;
        const char* channelType;
        long index;
        const char* path;
    } rows[] = {
        {"first input", "hardwareBinaryInput", 0, "BinaryInputs/Group 1/Input 1"},
        {"index 9 is the second channel of the second group", "hardwareBinaryInput", 9, "BinaryInputs/Group 2/Input 2"},
        {"behind the last input", "hardwareBinaryInput", 16, ""},
        {"a negative index", "hardwareBinaryInput", -1, ""},
        {"the empty type means inputs", "", 3, "BinaryInputs/Group 1/Input 4"},
        {"an unknown type means inputs", "somethingElse", 8, "BinaryInputs/Group 2/Input 1"},
        {"an output", "hardwareBinaryOutput", 7, "BinaryOutputs/Group 1/Output 8"},
        {"outputs end sooner", "hardwareBinaryOutput", 8, ""},
        {"an input of the relay is an output of the test set", "testObjectBinaryInput", 0,
         "BinaryOutputs/Group 1/Output 1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.path,
                  HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&hardware, row.channelType, row.index));
    }
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(nullptr, "hardwareBinaryInput", 0));
}

TEST(HardwareBasedUnitHelperTest, GroupOrderAndEmptyGroupsDecideTheDefaultPaths)
{
    ZemDevice::HardwareLayout layout;
    layout.binaryInputGroups = {HardwareGroupLayout{0, "", {}}, HardwareGroupLayout{2, "", {}},
                                HardwareGroupLayout{3, "", {}}};
    HardwareManager hardware(layout);
    EXPECT_EQ("BinaryInputs/Group 2/Input 1", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&hardware, "", 0));
    EXPECT_EQ("BinaryInputs/Group 3/Input 1", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&hardware, "", 2));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&hardware, "", 5));

    HardwareManager empty(makeLayout(0, 0, 0));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&empty, "", 0));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareChannelPath(&empty, "hardwareBinaryOutput", 0));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&empty, 0));
}

TEST(HardwareBasedUnitHelperTest, DefaultAnalogGroupPathByIndex)
{
    HardwareManager hardware; // three analog groups
    EXPECT_EQ("AnalogOutputs/Group 1", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&hardware, 0));
    EXPECT_EQ("AnalogOutputs/Group 3", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&hardware, 2));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&hardware, 3));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(&hardware, -1));
    EXPECT_EQ("", HardwareBasedUnitHelper::getDefaultHardwareAnalogOutputGroupPath(nullptr, 0));
}

TEST(HardwareBasedUnitHelperTest, LookupsFindOnlyTheWantedKind)
{
    HardwareManager hardware;
    ZemDevice::HardwareVirtualChannels* const channels = hardware.getVirtualChannels();
    ZemDevice::IVirtualBinaryInputChannel* const input = channels->binaryInputGroups()[1]->getChannel(2);
    ZemDevice::IVirtualBinaryOutputChannel* const output = channels->binaryOutputGroups()[0]->getChannel(0);
    ZemDevice::IVirtualAnalogOutputGroup* const analog = channels->analogOutputGroups()[1];

    EXPECT_EQ(input, HardwareBasedUnitHelper::getHardwareBinaryInputChannel(&hardware, "BinaryInputs/Group 2/Input 3"));
    EXPECT_EQ(output,
              HardwareBasedUnitHelper::getHardwareBinaryOutputChannel(&hardware, "BinaryOutputs/Group 1/Output 1"));
    EXPECT_EQ(analog, HardwareBasedUnitHelper::getHardwareAnalogOutputGroup(&hardware, "AnalogOutputs/Group 2"));

    const struct {
        const char* text;
        const char* path;
    } misses[] = {
        {"empty path", ""},
        {"a group, not a channel", "BinaryInputs/Group 1"},
        {"no such channel", "BinaryInputs/Group 1/Input 9"},
        {"a malformed path", "BinaryInputs//Input 1"},
        {"above the root", "../BinaryInputs/Group 1/Input 1"},
    };
    for (const auto& miss : misses) {
        SCOPED_TRACE(miss.text);
        EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareBinaryInputChannel(&hardware, miss.path));
        EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareBinaryOutputChannel(&hardware, miss.path));
        EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareAnalogOutputGroup(&hardware, miss.path));
    }
    // Another kind at the path is no match.
    EXPECT_EQ(nullptr,
              HardwareBasedUnitHelper::getHardwareBinaryOutputChannel(&hardware, "BinaryInputs/Group 2/Input 3"));
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareAnalogOutputGroup(&hardware, "BinaryOutputs/Group 1"));
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getHardwareBinaryInputChannel(nullptr, "BinaryInputs/Group 2/Input 3"));
}

TEST(HardwareBasedUnitHelperTest, ValueChannelFollowsTheFamilyOfTheChannelType)
{
    HardwareManager hardware;
    ZemDevice::HardwareVirtualChannels* const channels = hardware.getVirtualChannels();
    ZemDevice::IBinaryStateChannel* const input = channels->binaryInputGroups()[0]->getChannel(2);
    ZemDevice::IBinaryStateChannel* const output = channels->binaryOutputGroups()[0]->getChannel(2);
    const Contact inputContact("BinaryInputs/Group 1/Input 3", false);
    const Contact outputContact("BinaryOutputs/Group 1/Output 3", true);

    const struct {
        const char* channelType;
        ZemDevice::IBinaryStateChannel* forInput;
        ZemDevice::IBinaryStateChannel* forOutput;
    } rows[] = {
        {"", input, nullptr},
        {"hardwareBinaryInput", input, nullptr},
        {"hardwareBinaryOutput", nullptr, output},
        {"testObjectBinaryInput", nullptr, output},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.channelType);
        EXPECT_EQ(row.forInput,
                  HardwareBasedUnitHelper::getValueHardwareChannel(&hardware, &inputContact, row.channelType));
        EXPECT_EQ(row.forOutput,
                  HardwareBasedUnitHelper::getValueHardwareChannel(&hardware, &outputContact, row.channelType));
    }
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getValueHardwareChannel(&hardware, nullptr, ""));
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getValueHardwareChannel(nullptr, &inputContact, ""));
    // A number alone names no channel: only the path is looked up.
    const Contact byNumber(3, true);
    EXPECT_EQ(nullptr, HardwareBasedUnitHelper::getValueHardwareChannel(&hardware, &byNumber, ""));
}

} // namespace
