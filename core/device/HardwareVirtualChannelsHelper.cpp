#include "core/device/HardwareVirtualChannelsHelper.h"

#include "core/device/HardwareNode.h"
#include "core/tree/Node.h"

#include <vector>

namespace ZemDevice {

namespace {

std::string displayText(const ZemTree::Node& node)
{
    if (const auto* hardware = dynamic_cast<const HardwareNode*>(&node))
        return hardware->getDisplayName();
    const std::string description = node.getDescription();
    return description.empty() ? node.getId() : description;
}

} // namespace

std::string HardwareVirtualChannelsHelper::getPathDescription(const ZemTree::Node* root, ZemTree::Node* target,
                                                              const std::string& separator)
{
    if (root == nullptr || target == nullptr)
        return std::string();
    std::vector<std::string> texts;
    for (const ZemTree::Node* node = target; node != root; node = node->getParent()) {
        if (node == nullptr)
            return std::string();
        texts.push_back(displayText(*node));
    }
    const std::string joint = separator.empty() ? std::string(" / ") : separator;
    std::string description;
    for (auto text = texts.rbegin(); text != texts.rend(); ++text) {
        if (text != texts.rbegin())
            description += joint;
        description += *text;
    }
    return description;
}

} // namespace ZemDevice
