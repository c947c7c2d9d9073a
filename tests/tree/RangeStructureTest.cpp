#include "core/tree/RangeStructure.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>
#include <string>

namespace {

using ZemTree::RangeStructure;

std::string textOf(const RangeStructure& range)
{
    std::ostringstream stream;
    range >> stream;
    return stream.str();
}

TEST(RangeStructureTest, ContainsBothBoundsAndNothingElse)
{
    const RangeStructure range = RangeStructure::Standart(5.0, -5.0);
    EXPECT_EQ(range, RangeStructure::Standart(-5.0, 5.0)) << "the bounds are put in order";
    EXPECT_TRUE(range.contains(-5.0));
    EXPECT_TRUE(range.contains(5.0));
    EXPECT_FALSE(range.contains(5.000000001));
    EXPECT_FALSE(range.contains(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_TRUE(RangeStructure::Standart(0.0, 0.0).contains(-0.0));

    const RangeStructure empty;
    EXPECT_FALSE(empty.contains(0.0));
    EXPECT_NE(empty, RangeStructure::Standart(0.0, 0.0));
    EXPECT_THROW(RangeStructure::Standart(std::nan(""), 1.0), std::logic_error);
}

TEST(RangeStructureTest, TextReadsBackToTheSameRange)
{
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        RangeStructure range;
        const char* text;
    } rows[] = {
        {RangeStructure(), "[]"},
        {RangeStructure::Standart(-5.0, 5.0), "[-5;5]"},
        {RangeStructure::Standart(-0.123456789, 1e-20), "[-0.123456789;1e-20]"},
        {RangeStructure::Standart(1.0 / 3.0, 2.0 / 3.0), nullptr},
        {RangeStructure::Standart(-inf, inf), "[-inf;inf]"},
        {RangeStructure::Standart(-0.0, 0.0), "[-0;0]"},
    };
    for (const auto& row : rows) {
        const std::string text = textOf(row.range);
        SCOPED_TRACE(text);
        if (row.text != nullptr) {
            EXPECT_EQ(row.text, text);
        }
        RangeStructure back = RangeStructure::Standart(7.0, 8.0);
        std::istringstream stream(text);
        back << stream;
        EXPECT_FALSE(stream.bad());
        EXPECT_EQ(row.range, back);
        EXPECT_EQ(text, textOf(back));
    }
}

TEST(RangeStructureTest, MalformedTextSetsBadbitAndKeepsTheRange)
{
    for (const char* text :
         {"", "[", "[1;]", "[1;2", "[1;2] ", " [1;2]", "[1; 2]", "[1;2;3]", "[a;b]", "[nan;1]", "[2;1]", "[1,5;2]"}) {
        SCOPED_TRACE(text);
        RangeStructure range = RangeStructure::Standart(7.0, 8.0);
        std::istringstream stream(text);
        range << stream;
        EXPECT_TRUE(stream.bad());
        EXPECT_EQ(RangeStructure::Standart(7.0, 8.0), range);
    }
}

} // namespace
