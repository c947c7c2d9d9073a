#pragma once

#include <memory>

namespace ZemTree {

class Node;

// An item that can carry a hardware tree of its own.
class IEmbeddedHardwareContainer {
public:
    virtual ~IEmbeddedHardwareContainer() = default;
    // The item's slot of the embedded hardware; the item owns what the slot holds.
    virtual std::unique_ptr<Node>* getEmbeddedHardware() = 0;
};

} // namespace ZemTree
