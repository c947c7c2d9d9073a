#pragma once

namespace ZemTree {

// Marks the class of a tree's root. A root is never added below a collection container.
class IRootContainer {
public:
    virtual ~IRootContainer() = default;
};

} // namespace ZemTree
