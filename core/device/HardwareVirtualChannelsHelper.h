#pragma once

#include <string>

namespace ZemTree {
class Node;
}

namespace ZemDevice {

// Texts about places in the virtual channel tree.
class HardwareVirtualChannelsHelper {
public:
    HardwareVirtualChannelsHelper() = delete;

    // The display text of `target` seen from `root`: the texts of the nodes below `root` down to `target`, in the
    // current language, joined by `separator` (" / " when it is empty), e.g. "Binary inputs / Group 1 / Input 3".
    // A node of the channel tree shows its display name, any other node its description or else its id. Empty
    // when either is null, when `target` is `root`, or when `target` is not below `root`.
    static std::string getPathDescription(const ZemTree::Node* root, ZemTree::Node* target,
                                          const std::string& separator);
};

} // namespace ZemDevice
