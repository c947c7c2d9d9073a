#include "core/device/HardwareManager.h"

#include "core/device/HardwareVirtualChannels.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"
#include "core/tree/NodePathHelper.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using ZemDevice::HardwareGroupLayout;
using ZemDevice::HardwareManager;
using ZemDevice::HardwareVirtualChannels;
using ZemTree::Node;
using ZemTree::NodePathHelper;

TEST(DeviceHardwareManagerTest, AnyLayoutBuildsItsGroupsInOrderUnderStablePaths)
{
    HardwareManager::Layout layout;
    layout.binaryInputGroups = {HardwareGroupLayout{2, "Trips", {"Trip A"}}, HardwareGroupLayout{0, "", {}},
                                HardwareGroupLayout{5, "", {}}};
    const HardwareManager hardware(layout);
    HardwareVirtualChannels* channels = hardware.getVirtualChannels();
    EXPECT_TRUE(channels->binaryOutputGroups().empty());
    EXPECT_EQ(3u, channels->size()) << "an empty section is still there";
    ASSERT_EQ(3u, channels->binaryInputGroups().size());
    EXPECT_EQ(0u, channels->binaryInputGroups()[1]->getChannelCount());

    const auto& third = channels->binaryInputGroups()[2]->channels();
    ASSERT_EQ(5u, third.size());
    for (std::size_t index = 0; index < third.size(); ++index) {
        const std::string path = "BinaryInputs/Group 3/Input " + std::to_string(index + 1);
        SCOPED_TRACE(path);
        EXPECT_EQ(path, NodePathHelper::getPath(channels, third[index]));
        EXPECT_EQ(third[index], NodePathHelper::getTarget(channels, path));
        EXPECT_EQ(index + 1, third[index]->getChannelNumber());
    }
}

TEST(DeviceHardwareManagerTest, FindResolvesAPathToTheWantedKindOnly)
{
    const HardwareManager hardware;
    HardwareVirtualChannels* channels = hardware.getVirtualChannels();
    const struct {
        const char* path;
        bool input;
        bool output;
        bool analog;
    } rows[] = {
        {"BinaryInputs/Group 2/Input 8", true, false, false},
        {"BinaryOutputs/Group 1/Output 1", false, true, false},
        {"AnalogOutputs/Group 3", false, false, true},
        {"BinaryInputs/Group 2/Input 9", false, false, false},
        {"BinaryInputs/Group 3/Input 1", false, false, false},
        {"BinaryInputs/Group 1", false, false, false},
        {"../BinaryInputs/Group 1/Input 1", false, false, false},
        {"BinaryInputs//Input 1", false, false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(row.input, channels->find<ZemDevice::IVirtualBinaryInputChannel>(row.path) != nullptr);
        EXPECT_EQ(row.output, channels->find<ZemDevice::IVirtualBinaryOutputChannel>(row.path) != nullptr);
        EXPECT_EQ(row.analog, channels->find<ZemDevice::IVirtualAnalogOutputGroup>(row.path) != nullptr);
    }
}

TEST(DeviceHardwareManagerTest, TheStructureRefusesChanges)
{
    const HardwareManager hardware;
    HardwareVirtualChannels* channels = hardware.getVirtualChannels();
    Node* targets[] = {channels, channels->getBinaryInputsSection(), channels->binaryInputGroups()[0],
                       channels->binaryOutputGroups()[0]->getChannel(0), channels->analogOutputGroups()[0]};
    for (Node* target : targets) {
        SCOPED_TRACE(target->getHierarchicalId());
        const std::size_t before = target->size();
        EXPECT_THROW(target->add(std::make_unique<Node>("Extra")), std::logic_error);
        if (!target->empty()) {
            EXPECT_THROW(target->remove(target->at(0)), std::logic_error);
        }
        EXPECT_EQ(before, target->size());
    }
    EXPECT_EQ(8u, channels->binaryInputGroups()[0]->channels().size());
}

} // namespace
