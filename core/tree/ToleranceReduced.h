#pragma once

#include "core/common/Nullable.h"
#include "core/tree/RangeStructure.h"

namespace ZemTree {

// The tolerance in force at one value: a range of the relative deviation in percent and a range of the absolute
// deviation in the measure's units. A range that is absent means that this kind of tolerance does not apply; a
// value passes when it lies in either range that is present.
class ToleranceReduced {
public:
    // Both ranges absent.
    ToleranceReduced() = default;
    ToleranceReduced(const Zem::Nullable<RangeStructure>& relative, const Zem::Nullable<RangeStructure>& absolute);

    // Both ranges present and both [0;0]: only the setting itself passes.
    static ToleranceReduced Zero();

    const Zem::Nullable<RangeStructure>& relative() const { return _relative; }
    const Zem::Nullable<RangeStructure>& absolute() const { return _absolute; }

    bool operator==(const ToleranceReduced& other) const;
    bool operator!=(const ToleranceReduced& other) const { return !(*this == other); }

private:
    Zem::Nullable<RangeStructure> _relative;
    Zem::Nullable<RangeStructure> _absolute;
};

} // namespace ZemTree
