#pragma once

#include <cstdint>
#include <string>

namespace ZemTree {

// Reports :int64_t:the element's place in its parent, -1 when it has none.
class IIndexedElement {
public:
    virtual ~IIndexedElement() = default;
    virtual std::int64_t getIndex() const = 0;
};

} // namespace ZemTree
