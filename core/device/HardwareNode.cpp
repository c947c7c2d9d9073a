#include "core/device/HardwareNode.h"

#include "core/tree/TreeLocalization.h"

namespace ZemDevice {

HardwareNode::HardwareNode(const std::string& id, const std::string& displayKey, std::size_t number,
                           const std::string& name)
    : ZemTree::Node(id), _displayKey(displayKey), _number(number), _name(name)
{
}

std::string HardwareNode::getDisplayName() const
{
    if (!_name.empty())
        return _name;
    std::string text = lng::Tree::get(_displayKey);
    if (_number > 0)
        text += " " + std::to_string(_number);
    return text;
}

} // namespace ZemDevice
