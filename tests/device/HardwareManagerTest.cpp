#include "core/device/HardwareManager.h"

#include "core/device/HardwareVirtualChannels.h"
#include "core/device/IBinaryStateChannel.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"
#include "core/tree/NodePathHelper.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using ZemDevice::HardwareGroupLayout;
using ZemDevice::HardwareManager;
using ZemDevice::HardwareVirtualChannels;
using ZemTree::Node;
using ZemTree::NodePathHelper;

std::vector<std::size_t> countsOf(const std::vector<ZemDevice::VirtualBinaryInputGroup*>& groups)
{
    std::vector<std::size_t> counts;
    for (const auto* group : groups)
        counts.push_back(group->getChannelCount());
    return counts;
}

template <class TGroups> std::vector<std::string> pathsOf(const Node* root, const TGroups& groups)
{
    std::vector<std::string> paths;
    for (const auto* group : groups)
        paths.push_back(NodePathHelper::getPath(root, group));
    return paths;
}

TEST(DeviceHardwareManagerTest, DefaultLayoutIsTwoInputGroupsOneOutputGroupAndThreeAnalogGroups)
{
    const HardwareManager hardware;
    const HardwareVirtualChannels* channels = hardware.getVirtualChannels();
    ASSERT_NE(nullptr, channels);
    EXPECT_EQ((std::vector<std::size_t>{8, 8}), countsOf(channels->binaryInputGroups()));
    ASSERT_EQ(1u, channels->binaryOutputGroups().size());
    EXPECT_EQ(8u, channels->binaryOutputGroups()[0]->getChannelCount());
    ASSERT_EQ(3u, channels->analogOutputGroups().size());
    for (const auto* group : channels->analogOutputGroups())
        EXPECT_EQ(3u, group->getPhasors().size());
    EXPECT_EQ((std::vector<std::string>{"BinaryInputs", "BinaryOutputs", "AnalogOutputs"}),
              (std::vector<std::string>{channels->at(0)->getId(), channels->at(1)->getId(), channels->at(2)->getId()}));
}

TEST(DeviceHardwareManagerTest, AnyLayoutBuildsItsGroupsInOrderUnderStablePaths)
{
    HardwareManager::Layout layout;
    layout.binaryInputGroups = {HardwareGroupLayout{2, "Trips", {"Trip A"}}, HardwareGroupLayout{0, "", {}},
                                HardwareGroupLayout{5, "", {}}};
    layout.analogOutputGroups = {HardwareGroupLayout{6, "Currents", {}}};
    const HardwareManager hardware(layout);
    HardwareVirtualChannels* channels = hardware.getVirtualChannels();

    EXPECT_EQ((std::vector<std::size_t>{2, 0, 5}), countsOf(channels->binaryInputGroups()));
    EXPECT_TRUE(channels->binaryOutputGroups().empty());
    EXPECT_EQ(3u, channels->size()) << "an empty section is still there";
    EXPECT_EQ((std::vector<std::string>{"BinaryInputs/Group 1", "BinaryInputs/Group 2", "BinaryInputs/Group 3"}),
              pathsOf(channels, channels->binaryInputGroups()));
    EXPECT_EQ(std::vector<std::string>{"AnalogOutputs/Group 1"}, pathsOf(channels, channels->analogOutputGroups()));
    EXPECT_EQ(6u, channels->analogOutputGroups()[0]->getChannelCount());

    const auto& third = channels->binaryInputGroups()[2]->channels();
    ASSERT_EQ(5u, third.size());
    for (std::size_t index = 0; index < third.size(); ++index) {
        const std::string path = "BinaryInputs/Group 3/Input " + std::to_string(index + 1);
        SCOPED_TRACE(path);
        EXPECT_EQ(path, NodePathHelper::getPath(channels, third[index]));
        EXPECT_EQ(third[index], NodePathHelper::getTarget(channels, path));
        EXPECT_EQ(index + 1, third[index]->getChannelNumber());
    }
    EXPECT_EQ(3u, channels->binaryInputGroups()[2]->getGroupNumber());
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
        {"AnalogOutputs/Group 4", false, false, false},
        {"", false, false, false},
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

TEST(DeviceHardwareManagerTest, ChannelsCrossCastBetweenTheirInterfacesAndTheirNode)
{
    const HardwareManager hardware;
    HardwareVirtualChannels* channels = hardware.getVirtualChannels();
    Node* inputNode = NodePathHelper::getTarget(channels, "BinaryInputs/Group 1/Input 3");
    Node* outputNode = NodePathHelper::getTarget(channels, "BinaryOutputs/Group 1/Output 2");
    for (Node* node : {inputNode, outputNode}) {
        auto* state = dynamic_cast<ZemDevice::IBinaryStateChannel*>(node);
        ASSERT_NE(nullptr, state);
        EXPECT_EQ(node, dynamic_cast<Node*>(state));
    }
    auto* relayInput = dynamic_cast<ZemRelay::IBinaryInputChannel*>(inputNode);
    ASSERT_NE(nullptr, relayInput);
    EXPECT_EQ(nullptr, dynamic_cast<ZemRelay::IBinaryOutputChannel*>(inputNode));
    auto* group = dynamic_cast<ZemDriver::IChannelGroup*>(channels->analogOutputGroups()[1]);
    ASSERT_NE(nullptr, group);
    EXPECT_EQ(3u, group->getChannelCount());
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
