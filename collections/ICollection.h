#pragma once

#include "collections/CollectionIterator.h"
#include "collections/IBaseCollection.h"

#include <cstddef>
#include <cstdint>

namespace Zem {

// Read access to an ordered collection. The trailing pointer of the accessors only tells the overloads
// apart; it is always null and never read.
template <class T> class ICollection : public virtual IBaseCollection {
public:
    using iterator = CollectionIterator<T>;
    using const_iterator = CollectionIterator<T>;

    // Position of `item`, or -1 when it is not there.
    virtual std::int64_t getIndexOf(const T& item) const = 0;
    // Range-checked; throws std::out_of_range.
    virtual T& at(std::size_t index, T* = nullptr) = 0;
    virtual const T& at(std::size_t index, T* = nullptr) const = 0;
    virtual iterator begin(T* = nullptr) = 0;
    virtual iterator end(T* = nullptr) = 0;
    virtual const_iterator begin(T* = nullptr) const = 0;
    virtual const_iterator end(T* = nullptr) const = 0;
    // Not checked: the collection must not be empty.
    virtual T& front(T* = nullptr) = 0;
    virtual const T& front(T* = nullptr) const = 0;
    virtual T& back(T* = nullptr) = 0;
    virtual const T& back(T* = nullptr) const = 0;
};

} // namespace Zem
