#pragma once

#include "core/device/HardwareLayout.h"
#include "core/device/VirtualAnalogOutputGroup.h"
#include "core/device/VirtualBinaryGroup.h"
#include "core/tree/Node.h"
#include "core/tree/NodePathHelper.h"

#include <string>
#include <vector>

namespace ZemDevice {

class HardwareNode;

// The root of all channel paths of a test set. Its children are three fixed sections, each holding its groups:
//
//   BinaryInputs/Group 1/Input 1 ...    BinaryOutputs/Group 1/Output 1 ...    AnalogOutputs/Group 1 ...
//
// A path is stored relative to this node (NodePathHelper::getPath(root, channel)) and resolved with
// NodePathHelper::getTarget. The structure is fixed when the node is made and is locked against changes, so the
// group lists below always match the children; reading it is safe from any thread.
class HardwareVirtualChannels : public ZemTree::Node {
public:
    static const char* const BinaryInputsId;
    static const char* const BinaryOutputsId;
    static const char* const AnalogOutputsId;

    explicit HardwareVirtualChannels(const HardwareLayout& layout);

    // The groups of each section in order; the pointers live as long as this node.
    const std::vector<VirtualBinaryInputGroup*>& binaryInputGroups() const { return _binaryInputGroups; }
    const std::vector<VirtualBinaryOutputGroup*>& binaryOutputGroups() const { return _binaryOutputGroups; }
    const std::vector<VirtualAnalogOutputGroup*>& analogOutputGroups() const { return _analogOutputGroups; }

    HardwareNode* getBinaryInputsSection() const { return _binaryInputs; }
    HardwareNode* getBinaryOutputsSection() const { return _binaryOutputs; }
    HardwareNode* getAnalogOutputsSection() const { return _analogOutputs; }

    // The node of kind T that `path` leads to from this node, or null when it leads nowhere or to another kind.
    template <class T> T* find(const std::string& path)
    {
        return dynamic_cast<T*>(ZemTree::NodePathHelper::getTarget(this, path));
    }

private:
    HardwareNode* _binaryInputs = nullptr;
    HardwareNode* _binaryOutputs = nullptr;
    HardwareNode* _analogOutputs = nullptr;
    std::vector<VirtualBinaryInputGroup*> _binaryInputGroups;
    std::vector<VirtualBinaryOutputGroup*> _binaryOutputGroups;
    std::vector<VirtualAnalogOutputGroup*> _analogOutputGroups;
};

} // namespace ZemDevice
