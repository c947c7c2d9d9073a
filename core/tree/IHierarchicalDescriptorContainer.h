#pragma once

#include <string>

namespace ZemTree {

// Reports the keys and the descriptions along the path from the root.
class IHierarchicalDescriptorContainer {
public:
    virtual ~IHierarchicalDescriptorContainer() = default;
    virtual std::string getHierarchicalId() const = 0;
    virtual std::string getHierarchicalDescription() const = 0;
};

} // namespace ZemTree
