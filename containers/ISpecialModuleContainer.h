#pragma once

namespace ZemTree {

class SpecialModuleInfo;

// An item that may know the special module it came from.
class ISpecialModuleContainer {
public:
    virtual ~ISpecialModuleContainer() = default;
    // Null when the item came from no special module.
    virtual SpecialModuleInfo* getSpecialModuleInfo() = 0;
};

} // namespace ZemTree
