#pragma once

#include <string>

namespace ZemTree {

class Measure;

// The text form of a measure: its key.
class MeasureTypeConverter {
public:
    MeasureTypeConverter() = delete;

    // The key of `measure`; the empty text for null.
    static std::string toStringData(const Measure* measure);
    // The shared instance of that key; null for the empty text and for any unknown text.
    static Measure* fromStringData(const std::string& text);
};

} // namespace ZemTree
