#include "core/tree/ToleranceReducedTypeConverter.h"

#include "core/tree/ToleranceReduced.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using ZemTree::RangeStructure;
using ZemTree::ToleranceReduced;
using ZemTree::ToleranceReducedTypeConverter;

TEST(ToleranceReducedTypeConverterTest, TextReadsBackToAnEqualTolerance)
{
    const RangeStructure relative = RangeStructure::Standart(-5.0, 5.0);
    const RangeStructure absolute = RangeStructure::Standart(-0.1, 0.25);
    const struct {
        ToleranceReduced tolerance;
        const char* text;
    } rows[] = {
        {ToleranceReduced(relative, absolute), "[-5;5]|[-0.1;0.25]"},
        {ToleranceReduced({}, absolute), "|[-0.1;0.25]"},
        {ToleranceReduced(), "|"},
        {ToleranceReduced(RangeStructure(), {}), "[]|"},
        {ToleranceReduced(RangeStructure::Standart(-1.0 / 3.0, 0.7), {}), nullptr},
    };
    for (const auto& row : rows) {
        const std::string text = ToleranceReducedTypeConverter::toStringData(row.tolerance);
        SCOPED_TRACE(text);
        if (row.text != nullptr) {
            EXPECT_EQ(row.text, text);
        }
        ToleranceReduced back(RangeStructure::Standart(1.0, 2.0), RangeStructure::Standart(3.0, 4.0));
        ASSERT_TRUE(ToleranceReducedTypeConverter::fromStringData(text, back));
        EXPECT_EQ(row.tolerance, back);
    }
}

TEST(ToleranceReducedTypeConverterTest, MalformedTextIsRefusedAndLeavesTheTolerance)
{
    for (const char* text : {"", "[-5;5]", "||", "[-5;5] |", "|[1;2]x", "[-5;5]|[2;1]", "[1;2]:[3;4]"}) {
        SCOPED_TRACE(text);
        ToleranceReduced tolerance(RangeStructure::Standart(1.0, 2.0), {});
        EXPECT_FALSE(ToleranceReducedTypeConverter::fromStringData(text, tolerance));
        EXPECT_EQ(ToleranceReduced(RangeStructure::Standart(1.0, 2.0), {}), tolerance);
    }
}

} // namespace
