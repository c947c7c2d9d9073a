#include "core/tree/ToleranceReduced.h"

namespace ZemTree {

ToleranceReduced::ToleranceReduced(const Zem::Nullable<RangeStructure>& relative,
                                   const Zem::Nullable<RangeStructure>& absolute)
    : _relative(relative), _absolute(absolute)
{
}

ToleranceReduced ToleranceReduced::Zero()
{
    const RangeStructure zero = RangeStructure::Standart(0.0, 0.0);
    return ToleranceReduced(zero, zero);
}

bool ToleranceReduced::operator==(const ToleranceReduced& other) const
{
    return _relative == other._relative && _absolute == other._absolute;
}

} // namespace ZemTree
