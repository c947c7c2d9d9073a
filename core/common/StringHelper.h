#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Zem {

// Plain text operations that do not depend on the locale. Case folding is ASCII only, so UTF-8 bytes of other
// letters pass through unchanged.
class StringHelper {
public:
    StringHelper() = delete;

    // The parts between `separator`s, empty ones included: "a||b" gives "a", "", "b"; a trailing separator
    // gives a last, empty part; an empty text gives one empty part.
    static std::vector<std::string> split(const std::string& text, char separator);

    // A copy of `text` with every occurrence of `pattern` replaced, scanning left to right without
    // rescanning the replacement. An empty pattern leaves the text unchanged.
    static std::string replaceAll(const std::string& text, const std::string& pattern, const std::string& replacement);

    // Whether `pattern` stands at `position` of `text` and ends at or before `end` (an `end` past the text
    // counts as its length). `ignoreCase` compares ASCII letters without regard to case. An empty pattern
    // stands at any position up to `end`.
    static bool isInclude(const std::string& text, const std::string& pattern, std::size_t position, std::size_t end,
                          bool ignoreCase);

    // `text` without leading and trailing blanks (space, tab, line breaks, form feed, vertical tab).
    static std::string trim(const std::string& text);
    static std::string toLower(const std::string& text);
    static std::string toUpper(const std::string& text);
    static bool startsWith(const std::string& text, const std::string& prefix);
    static bool endsWith(const std::string& text, const std::string& suffix);
};

} // namespace Zem
