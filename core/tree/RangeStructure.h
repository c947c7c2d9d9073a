#pragma once

#include <sstream>
#include <string>

namespace ZemTree {

// A closed numeric range [low, high], or the empty range that contains nothing.
//
// Text form (stream convention, object on the left): "[low;high]" with the bounds in the shortest classic-locale
// form that reads back to the same double ("inf" and "-inf" allowed), and "[]" for the empty range. Reading is
// strict: no blanks, no surplus characters, a bound that is not a number ("nan"), or low above high set the
// stream's badbit and leave the range as it was.
class RangeStructure {
public:
    // The empty range; it contains no value and equals only another empty range.
    RangeStructure() = default;

    // The range between two bounds, both included. The bounds may be given in either order and may be infinite.
    // A bound that is not a number has no range and throws std::logic_error.
    static RangeStructure Standart(double low, double high);

    bool isEmpty() const { return _isEmpty; }
    // Meaningless on the empty range, where both are 0.
    double getLow() const { return _low; }
    double getHigh() const { return _high; }

    // Whether low <= value <= high; never for NaN and never on the empty range.
    bool contains(double value) const;

    bool operator==(const RangeStructure& other) const;
    bool operator!=(const RangeStructure& other) const { return !(*this == other); }

    void operator>>(std::ostringstream& stream) const;
    void operator<<(std::istringstream& stream);

    // The text of one bound: the shortest form of up to 17 significant digits that reads back to the same double.
    static std::string boundToText(double value);
    // Reads a range text as the stream form does; false leaves `range` as it was.
    static bool tryParse(const std::string& text, RangeStructure& range);

private:
    double _low = 0.0;
    double _high = 0.0;
    bool _isEmpty = true;
};

} // namespace ZemTree
