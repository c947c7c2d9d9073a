#include "core/common/NumericHelper.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

using Zem::NumericHelper;

struct Row {
    const char* name;
    double value, step, origin, expected;
};

// Exact comparison on purpose: the result must be the double nearest to the decimal multiple.
TEST(NumericHelperTest, StepRoundingTable)
{
    const std::vector<Row> rows = {
        {"below half", 0.124, 0.01, 0.0, 0.12},
        {"half step, binary just below", 0.125, 0.01, 0.0, 0.13},
        {"half step, 1.005", 1.005, 0.01, 0.0, 1.01},
        {"whole half rounds up, not to even", 2.5, 1.0, 0.0, 3.0},
        {"sum with binary noise", 0.1 + 0.2, 0.1, 0.0, 0.3},
        {"step 0.0001", 1.23456789, 0.0001, 0.0, 1.2346},
        {"angle near -180", -179.99995, 0.0001, 0.0, -180.0},
        {"step 5 negative half", -7.5, 5.0, 0.0, -10.0},
        {"origin 1, half step below", 0.5, 1.0, 1.0, 0.0},
        {"origin 0.1, step 0.5", 1.3, 0.5, 0.1, 1.1},
        {"origin 1000, half step", 1000.005, 0.01, 1000.0, 1000.01},
        {"large value half step", 1000000000.005, 0.01, 0.0, 1000000000.01},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(NumericHelper::stepRounding(row.value, row.step, row.origin), row.expected);
    }
}

TEST(NumericHelperTest, FineStepsAndZero)
{
    const double value = 1.2345678901234567;
    EXPECT_NEAR(NumericHelper::stepRounding(value, 1e-15), value, 0.5e-15);
    // Zero comes back positive.
    EXPECT_FALSE(std::signbit(NumericHelper::stepRounding(-0.001, 0.01)));
}

TEST(NumericHelperTest, UnusableInputsReturnTheValue)
{
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(NumericHelper::stepRounding(nan, 0.01)));
    EXPECT_EQ(NumericHelper::stepRounding(inf, 0.01), inf);
    EXPECT_EQ(NumericHelper::stepRounding(1.234, 0.0), 1.234);
    EXPECT_EQ(NumericHelper::stepRounding(1.234, -0.01), 1.234);
    EXPECT_EQ(NumericHelper::stepRounding(1.234, inf), 1.234);
    // Too many steps from the origin for a double to hold a fraction: nothing to round, and no overflow.
    EXPECT_EQ(NumericHelper::stepRounding(1e20, 0.01), 1e20);
}

} // namespace
