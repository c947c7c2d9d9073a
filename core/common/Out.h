#pragma once

#include <exception>
#include <memory>

namespace Zem {

// The error a value out carries instead of a good value. Error objects are shared and immutable; `what()` is
// what the user is shown.
using ErrorPointer = std::shared_ptr<const std::exception>;

// The computed record of a value: what is seen, as opposed to what was set. A failed value still carries a
// usable default in `value`, with the reason in `error`.
template <class T> struct Out {
    T value{};
    ErrorPointer error;
};

} // namespace Zem
