#pragma once

#include <string>

namespace ZemTree {

class ToleranceReduced;

// The text form of a reduced tolerance: "relative|absolute", each part a range text ("[-5;5]", "[]" for the
// empty range) or nothing when that range is absent. So "[-5;5]|[-0.1;0.1]" has both ranges, "|[-0.1;0.1]" only
// the absolute one, and "|" neither; the text is never empty. A written text reads back to an equal tolerance.
// A deviation range with an infinite bound ("[-inf;inf]") is no valid form: it would admit everything.
class ToleranceReducedTypeConverter {
public:
    ToleranceReducedTypeConverter() = delete;

    static std::string toStringData(const ToleranceReduced& tolerance);
    // Replaces `tolerance` and returns true when the whole text is a valid form; otherwise returns false and
    // leaves it as it was. The empty text is not a valid form.
    static bool fromStringData(const std::string& text, ToleranceReduced& tolerance);
};

} // namespace ZemTree
