#include "core/common/StringHelper.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

using Zem::StringHelper;

TEST(StringHelperTest, SplitKeepsEmptyParts)
{
    struct Row {
        std::string text;
        std::vector<std::string> parts;
    };
    const std::vector<Row> rows = {
        {"", {""}}, {"a;b;", {"a", "b", ""}}, {";a", {"", "a"}}, {"a;;b", {"a", "", "b"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE("\"" + row.text + "\"");
        EXPECT_EQ(StringHelper::split(row.text, ';'), row.parts);
    }
}

TEST(StringHelperTest, ReplaceAll)
{
    struct Row {
        std::string text, pattern, replacement, expected;
    };
    const std::vector<Row> rows = {
        {"aaa", "aa", "b", "ba"}, {"abc", "", "x", "abc"}, {"abcb", "b", "", "ac"},
        {"a.b", ".", "..", "a..b"}, // The replacement is not scanned again.
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text + " / " + row.pattern);
        EXPECT_EQ(StringHelper::replaceAll(row.text, row.pattern, row.replacement), row.expected);
    }
}

TEST(StringHelperTest, IsInclude)
{
    const std::size_t npos = std::numeric_limits<std::size_t>::max();
    struct Row {
        const char* name;
        std::string text, pattern;
        std::size_t position, end;
        bool ignoreCase, expected;
    };
    const std::vector<Row> rows = {
        {"case differs, case-sensitive", "NaN", "nan", 0, 3, false, false},
        {"case differs, case ignored", "xNaN", "nan", 1, 4, true, true},
        {"pattern crosses end", "infinity", "inf", 0, 2, false, false},
        {"end past the text is clamped", "abc", "bc", 1, 100, false, true},
        {"huge position", "abc", "a", npos, npos, false, false},
        {"empty pattern at the end", "abc", "", 3, 3, false, true},
        {"empty pattern behind end", "abc", "", 3, 2, false, false},
        {"non-letters are not folded", "a[", "A{", 0, 2, true, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(StringHelper::isInclude(row.text, row.pattern, row.position, row.end, row.ignoreCase), row.expected);
    }
}

} // namespace
