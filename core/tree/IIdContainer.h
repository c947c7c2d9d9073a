#pragma once

#include <cstdint>
#include <string>

namespace ZemTree {

// Reports :string:the node's key, unique among its siblings.
class IIdContainer {
public:
    virtual ~IIdContainer() = default;
    virtual std::string getId() const = 0;
};

} // namespace ZemTree
