#include "core/device/HardwareVirtualChannelsHelper.h"

#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/tree/NodePathHelper.h"
#include "core/tree/TreeLocalization.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using ZemDevice::HardwareGroupLayout;
using ZemDevice::HardwareManager;
using ZemDevice::HardwareVirtualChannelsHelper;
using ZemTree::Node;
using ZemTree::NodePathHelper;

class DeviceHelperTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = 0; }
};

TEST_F(DeviceHelperTest, PathDescriptionInBothLanguages)
{
    HardwareManager::Layout layout = HardwareManager::defaultLayout();
    layout.binaryOutputGroups.push_back(HardwareGroupLayout{3, "Breaker", {"Close", "", "Open"}});
    const HardwareManager hardware(layout);
    Node* root = hardware.getVirtualChannels();
    const struct {
        const char* path;
        const char* separator;
        const char* english;
        const char* russian;
    } rows[] = {
        {"BinaryInputs/Group 1/Input 3", "", "Binary inputs / Group 1 / Input 3",
         "Дискретные входы / Группа 1 / Вход 3"},
        {"AnalogOutputs/Group 3", " > ", "Analog outputs > Group 3", "Аналоговые выходы > Группа 3"},
        // Names given by the host stay as they are in every language.
        {"BinaryOutputs/Group 2/Output 1", "/", "Binary outputs/Breaker/Close", "Дискретные выходы/Breaker/Close"},
        {"BinaryOutputs/Group 2/Output 2", "", "Binary outputs / Breaker / Output 2",
         "Дискретные выходы / Breaker / Выход 2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        Node* target = NodePathHelper::getTarget(root, row.path);
        ASSERT_NE(nullptr, target);
        lng::language = 0;
        EXPECT_EQ(row.english, HardwareVirtualChannelsHelper::getPathDescription(root, target, row.separator));
        lng::language = 1;
        EXPECT_EQ(row.russian, HardwareVirtualChannelsHelper::getPathDescription(root, target, row.separator));
    }
}

TEST_F(DeviceHelperTest, PathDescriptionOfOddPairsIsEmptyOrRelative)
{
    const HardwareManager hardware;
    const HardwareManager other;
    Node* root = hardware.getVirtualChannels();
    Node* input = NodePathHelper::getTarget(root, "BinaryInputs/Group 1/Input 3");
    Node* group = input->getParent();
    Node* foreign = NodePathHelper::getTarget(other.getVirtualChannels(), "BinaryInputs/Group 1/Input 3");
    ASSERT_NE(nullptr, foreign);

    EXPECT_EQ("", HardwareVirtualChannelsHelper::getPathDescription(nullptr, input, ""));
    EXPECT_EQ("", HardwareVirtualChannelsHelper::getPathDescription(root, root, ""));
    EXPECT_EQ("", HardwareVirtualChannelsHelper::getPathDescription(root, foreign, ""));
    EXPECT_EQ("", HardwareVirtualChannelsHelper::getPathDescription(input, group, ""));
    EXPECT_EQ("Input 3", HardwareVirtualChannelsHelper::getPathDescription(group, input, ""));
}

TEST_F(DeviceHelperTest, OtherNodesShowTheirDescriptionOrElseTheirId)
{
    Node root("Root");
    Node* described = root.add(std::make_unique<Node>("A", ZemTree::LocalString::create("Alpha", "Альфа")));
    Node* plain = described->add(std::make_unique<Node>("B"));
    lng::language = 1;
    EXPECT_EQ("Альфа / B", HardwareVirtualChannelsHelper::getPathDescription(&root, plain, ""));
}

} // namespace
