#pragma once

#include "core/common/Nullable.h"

#include <string>

namespace ZemTree {

// How far a measurement lies from its setting: the relative deviation in percent and the absolute deviation in
// the measure's own units. Either or both may be empty, meaning that this kind was not judged.
class Deviation {
public:
    Deviation() = default;
    // Relative first, absolute second.
    Deviation(const Zem::Nullable<double>& relative, const Zem::Nullable<double>& absolute);

    const Zem::Nullable<double>& relative() const { return _relative; }
    const Zem::Nullable<double>& absolute() const { return _absolute; }

    // The deviation for reading, relative before absolute and only the parts that are set, joined by " / ":
    // "+1.25 % / +0.0125", "-3 %", "+0.5", or "" when neither is set. Every number carries its sign ("+" or
    // "-") except a zero, which is "0"; a number keeps at most 13 digits behind the point, so that noise of the
    // binary arithmetic (0.0999999999999996) reads as 0.1. The text is the same in every locale.
    std::string getDisplayValue() const;

    bool operator==(const Deviation& other) const;
    bool operator!=(const Deviation& other) const { return !(*this == other); }

private:
    Zem::Nullable<double> _relative;
    Zem::Nullable<double> _absolute;
};

} // namespace ZemTree
