#pragma once

#include "collections/NotifyUniquePtrCollectionStructure.h"
#include "core/tree/ToleranceItem.h"

#include <sstream>

namespace ZemTree {

// A user-edited tolerance: an owning, notifying list of items, each valid over a range of the argument. Adding,
// removing or changing an item reaches observers as the structure signal. ToleranceHelper::reduce gives the
// ranges in force at one value.
//
// Text form (stream convention, object on the left): the item texts in list order, separated by one blank, e.g.
// "[0;10]:[-5;5]| [10;inf]:|[-0.1;0.1]"; the empty text is the empty tolerance. Reading replaces all items, or,
// for a malformed text (an empty piece, a bad item), sets the stream's badbit and leaves the list as it was.
class Tolerance : public NotifyUniquePtrCollectionStructure<ToleranceItem> {
public:
    Tolerance() = default;
    ~Tolerance() override;

    // Same items, with the same ranges, in the same order.
    bool isEqualTo(const Tolerance& other) const;

    void operator>>(std::ostringstream& stream) const;
    void operator<<(std::istringstream& stream);
};

} // namespace ZemTree
