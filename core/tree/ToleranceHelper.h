#pragma once

#include <memory>

namespace ZemTree {

class Tolerance;
class ToleranceReduced;

// Finds the ranges of a tolerance that are in force at one value of the argument.
class ToleranceHelper {
public:
    ToleranceHelper() = delete;

    // Always a new, non-null object:
    // - the ranges of the first item, in list order, whose argument range contains `value` (so of overlapping
    //   items the earlier one wins);
    // - below every item's argument range, the ranges of the item with the lowest low bound; above every one,
    //   those of the item with the highest high bound (the first such item on a tie): a tolerance carries on
    //   beyond its ends;
    // - in a gap between items, for NaN, for a tolerance without items (or with only items over the empty
    //   argument range) and for a null tolerance, the zero tolerance (both ranges [0;0]), the same that an
    //   assessment without a tolerance uses.
    static std::shared_ptr<ToleranceReduced> reduce(const Tolerance* tolerance, double value);
    static std::shared_ptr<ToleranceReduced> reduce(const Tolerance& tolerance, double value);
};

} // namespace ZemTree
