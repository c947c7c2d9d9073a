#pragma once

#include <cstdint>

namespace Zem {

enum class NotifyCollectionChangedAction : std::int32_t { Added = 0, Removed = 1, Moved = 2 };

// What changed in a collection. For Moved, `index` is the new place and `oldIndex` the one it came from;
// otherwise `oldIndex` is 0.
template <class T> struct NotifyCollectionChangedSignalArgs {
    NotifyCollectionChangedAction action = NotifyCollectionChangedAction::Added;
    T item{};
    std::uint64_t index = 0;
    std::uint64_t oldIndex = 0;
};

} // namespace Zem
