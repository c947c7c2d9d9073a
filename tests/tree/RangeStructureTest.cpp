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

TEST(RangeStructureTest, ContainsBothBoundsAndNothingOutside)
{
    const RangeStructure range = RangeStructure::Standart(-5.0, 5.0);
    EXPECT_TRUE(range.contains(-5.0));
    EXPECT_TRUE(range.contains(5.0));
    EXPECT_TRUE(range.contains(0.0));
    EXPECT_FALSE(range.contains(5.000000001));
    EXPECT_FALSE(range.contains(-5.000000001));
    EXPECT_FALSE(range.contains(std::numeric_limits<double>::quiet_NaN()));

    const RangeStructure point = RangeStructure::Standart(0.0, 0.0);
    EXPECT_TRUE(point.contains(0.0));
    EXPECT_TRUE(point.contains(-0.0));
    EXPECT_FALSE(point.contains(1e-300));
}

TEST(RangeStructureTest, EmptyRangeContainsNothingAndEqualsOnlyEmpty)
{
    const RangeStructure empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_FALSE(empty.contains(0.0));
    EXPECT_EQ(empty, RangeStructure());
    EXPECT_NE(empty, RangeStructure::Standart(0.0, 0.0));
}

TEST(RangeStructureTest, StandartOrdersItsBoundsAndRefusesNaN)
{
    EXPECT_EQ(RangeStructure::Standart(-1.0, 3.0), RangeStructure::Standart(3.0, -1.0));
    EXPECT_EQ(-1.0, RangeStructure::Standart(3.0, -1.0).getLow());
    EXPECT_NE(RangeStructure::Standart(-1.0, 3.0), RangeStructure::Standart(-1.0, 3.5));
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(RangeStructure::Standart(-inf, 0.0).contains(-1e308));
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
        {RangeStructure::Standart(0.1, 0.2), "[0.1;0.2]"},
        {RangeStructure::Standart(-0.123456789, 1e-20), "[-0.123456789;1e-20]"},
        {RangeStructure::Standart(1.0 / 3.0, 2.0 / 3.0), nullptr},
        {RangeStructure::Standart(0.1 + 0.2, 1e300), nullptr},
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
         {"",       "[",      "]",       "[1]",   "[1;]",    "[;1]",    "[1;2",  "1;2]",    "[1;2] ", " [1;2]",
          "[ 1;2]", "[1; 2]", "[1;2;3]", "[a;b]", "[nan;1]", "[1;nan]", "[2;1]", "[1,5;2]", "(1;2)",  "[1;2][3;4]"}) {
        SCOPED_TRACE(text);
        RangeStructure range = RangeStructure::Standart(7.0, 8.0);
        std::istringstream stream(text);
        range << stream;
        EXPECT_TRUE(stream.bad());
        EXPECT_EQ(RangeStructure::Standart(7.0, 8.0), range);
    }
}

} // namespace
