#pragma once

#include <cstddef>

namespace Zem {

// The size of any collection, whatever its item type.
class IBaseCollection {
public:
    virtual ~IBaseCollection() = default;
    virtual std::size_t size() const = 0;
    virtual bool empty() const = 0;
};

} // namespace Zem
