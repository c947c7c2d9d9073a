#pragma once

namespace ZemTree {

// A container whose fixed structure is built on first demand rather than in its constructor.
class ILazyInitContainer {
public:
    virtual ~ILazyInitContainer() = default;
    virtual void initContainer() = 0;
};

} // namespace ZemTree
