#pragma once

#include "collections/IStructureChanged.h"
#include "core/common/Nullable.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/ToleranceReduced.h"

#include <memory>
#include <sstream>
#include <string>

namespace ZemTree {

// One entry of a tolerance: over a range of the argument (e.g. the current at which a time is measured) it gives
// a relative range in percent and/or an absolute range in the measure's units. Each setter compares first, and
// only on a change stores and raises the structure signal, so that the owning Tolerance hears of it.
//
// Text form (stream convention, object on the left): "argument:relative|absolute", the argument a range text and
// the rest the form of ToleranceReducedTypeConverter, e.g. "[0;10]:[-5;5]|" or "[10;inf]:|[-0.1;0.1]". Reading is
// strict; a malformed text sets the stream's badbit and leaves the item and its signal untouched.
class ToleranceItem : public IStructureChanged {
public:
    // An item over the empty argument range, which applies to no value, with both ranges absent.
    ToleranceItem() = default;
    ToleranceItem(const RangeStructure& argument, const Zem::Nullable<RangeStructure>& relative,
                  const Zem::Nullable<RangeStructure>& absolute);
    ToleranceItem(const ToleranceItem&) = delete;
    ToleranceItem& operator=(const ToleranceItem&) = delete;

    const RangeStructure& getArgument() const { return _argument; }
    const Zem::Nullable<RangeStructure>& getRelative() const { return _relative; }
    const Zem::Nullable<RangeStructure>& getAbsolute() const { return _absolute; }
    // The two ranges of this item as the tolerance in force.
    ToleranceReduced getReduced() const { return ToleranceReduced(_relative, _absolute); }

    void setArgument(const RangeStructure& argument);
    void setRelative(const Zem::Nullable<RangeStructure>& relative);
    void setAbsolute(const Zem::Nullable<RangeStructure>& absolute);

    // A new item with the same ranges and no connections.
    std::unique_ptr<ToleranceItem> clone() const;
    // Same argument and same ranges.
    bool isEqualTo(const ToleranceItem& other) const;

    void operator>>(std::ostringstream& stream) const;
    void operator<<(std::istringstream& stream);

    // Reads an item text; null for a malformed one.
    static std::unique_ptr<ToleranceItem> tryParse(const std::string& text);

private:
    RangeStructure _argument;
    Zem::Nullable<RangeStructure> _relative;
    Zem::Nullable<RangeStructure> _absolute;
};

} // namespace ZemTree
