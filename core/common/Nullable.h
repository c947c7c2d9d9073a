#pragma once

#include <stdexcept>
#include <utility>

namespace Zem {

// A value or nothing. Nullable<bool> is the three-valued flag of the tree: empty, false or true.
template <class T> class Nullable {
public:
    Nullable() = default;
    Nullable(const T& value) : _value(value), _hasValue(true) {}
    Nullable(T&& value) : _value(std::move(value)), _hasValue(true) {}

    bool hasValue() const { return _hasValue; }
    explicit operator bool() const { return _hasValue; }

    // Throws std::logic_error when empty.
    const T& getValue() const
    {
        if (!_hasValue)
            throw std::logic_error("Nullable has no value");
        return _value;
    }
    T getValueOr(const T& fallback) const { return _hasValue ? _value : fallback; }

    void setValue(const T& value)
    {
        _value = value;
        _hasValue = true;
    }
    void reset()
    {
        _value = T();
        _hasValue = false;
    }

    // Two empties are equal; an empty never equals a value.
    bool operator==(const Nullable& other) const
    {
        return _hasValue == other._hasValue && (!_hasValue || _value == other._value);
    }
    bool operator!=(const Nullable& other) const { return !(*this == other); }

private:
    T _value{};
    bool _hasValue = false;
};

using NullableBool = Nullable<bool>;

} // namespace Zem
