#pragma once

#include <cstddef>
#include <iterator>

namespace Zem {

template <class T> class ICollection;

// Walks a collection either straight over its vector (null source) or through the source's `at`, so that
// a class overriding `begin` and `end` can hand out positions of its own. In the source form the index
// becomes all ones once it passes the last item: that is the end mark.
template <class T> class CollectionIterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = const T*;
    using reference = const T&;

    static constexpr std::size_t endIndex = static_cast<std::size_t>(-1);

    CollectionIterator() = default;
    // Raw form over a vector.
    explicit CollectionIterator(const T* item) : _item(item) {}
    // Source form; an empty source starts at the end mark.
    CollectionIterator(const ICollection<T>* source, std::size_t index)
        : _source(source), _index(source != nullptr && index < source->size() ? index : endIndex)
    {
    }

    const T& operator*() const { return _source != nullptr ? _source->at(_index) : *_item; }
    const T* operator->() const { return &**this; }

    CollectionIterator& operator++()
    {
        if (_source == nullptr) {
            ++_item;
        }
        else if (_index != endIndex) {
            const std::size_t count = _source->size();
            _index = (count > 0 && _index < count - 1) ? _index + 1 : endIndex;
        }
        return *this;
    }
    CollectionIterator operator++(int)
    {
        CollectionIterator before = *this;
        ++*this;
        return before;
    }

    bool operator==(const CollectionIterator& other) const
    {
        return _source == other._source && _index == other._index && _item == other._item;
    }
    bool operator!=(const CollectionIterator& other) const { return !(*this == other); }

    const ICollection<T>* getSource() const { return _source; }
    std::size_t getIndex() const { return _index; }

private:
    const ICollection<T>* _source = nullptr;
    std::size_t _index = 0;
    const T* _item = nullptr;
};

} // namespace Zem
