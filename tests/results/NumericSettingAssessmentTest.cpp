#include "results/NumericSettingAssessment.h"

#include "core/tree/Deviation.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace {

using Zem::Nullable;
using ZemTree::Deviation;
using ZemTree::NumericSettingAssessment;
using ZemTree::RangeStructure;
using ZemTree::ToleranceReduced;

std::shared_ptr<ToleranceReduced> tolerance(Nullable<RangeStructure> relative, Nullable<RangeStructure> absolute)
{
    return std::make_shared<ToleranceReduced>(relative, absolute);
}

RangeStructure symmetric(double half)
{
    return RangeStructure::Standart(-half, half);
}

struct AssessRow {
    const char* text;
    double setting;
    Nullable<RangeStructure> relative;
    Nullable<RangeStructure> absolute;
    double measurment;
    bool expected;
    Nullable<double> expectedRelative;
    Nullable<double> expectedAbsolute;
};

TEST(NumericSettingAssessmentTest, OneValuePassesEitherRange)
{
    const AssessRow rows[] = {
        {"relative passes, absolute fails", 10.0, symmetric(5.0), symmetric(0.1), 10.4, true, 4.0, 10.4 - 10.0},
        {"both fail", 10.0, symmetric(1.0), symmetric(0.1), 9.5, false, -5.0, -0.5},
        {"neither range fails every value", 10.0, {}, {}, 10.0, false, {}, {}},
        {"rounded percentage passes at 5.004", 100.0, symmetric(5.0), {}, 105.004, true, 5.0, {}},
        {"rounded percentage fails at 5.006", 100.0, symmetric(5.0), {}, 105.006, false, 5.01, {}},
        {"asymmetric range", 10.0, RangeStructure::Standart(0.0, 5.0), {}, 9.9, false, -1.0, {}},
        {"setting zero, relative only", 0.0, symmetric(5.0), {}, 0.0, false, {}, {}},
        {"setting zero, both ranges", 0.0, symmetric(5.0), symmetric(0.5), 0.3, true, {}, 0.3},
    };
    for (const AssessRow& row : rows) {
        SCOPED_TRACE(row.text);
        const NumericSettingAssessment assessment(row.setting, tolerance(row.relative, row.absolute));
        Deviation deviation(99.0, 99.0);
        EXPECT_EQ(row.expected, assessment.isValidMeasurment(row.measurment, deviation));
        ASSERT_EQ(row.expectedRelative.hasValue(), deviation.relative().hasValue());
        if (row.expectedRelative.hasValue()) {
            EXPECT_DOUBLE_EQ(row.expectedRelative.getValue(), deviation.relative().getValue());
        }
        ASSERT_EQ(row.expectedAbsolute.hasValue(), deviation.absolute().hasValue());
        if (row.expectedAbsolute.hasValue()) {
            EXPECT_DOUBLE_EQ(row.expectedAbsolute.getValue(), deviation.absolute().getValue());
        }
    }
    // A null tolerance admits the setting alone.
    Deviation deviation;
    EXPECT_TRUE(NumericSettingAssessment(10.0, nullptr).isValidMeasurment(10.0, deviation));
    EXPECT_FALSE(NumericSettingAssessment(10.0, nullptr).isValidMeasurment(10.1, deviation));
}

TEST(NumericSettingAssessmentTest, NotANumberFailsAndStillWritesTheDeviation)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const NumericSettingAssessment assessment(10.0, tolerance(symmetric(5.0), symmetric(1.0)));
    Deviation deviation;
    EXPECT_FALSE(assessment.isValidMeasurment(nan, deviation));
    EXPECT_TRUE(deviation.relative().hasValue());
    EXPECT_TRUE(std::isnan(deviation.absolute().getValue()));

    // A setting that is not a number counts as non-zero: the relative part is there, and nothing passes.
    const NumericSettingAssessment nanSetting(nan, tolerance(symmetric(5.0), {}));
    EXPECT_FALSE(nanSetting.isValidMeasurment(1.0, deviation));
    EXPECT_TRUE(deviation.relative().hasValue());
}

TEST(NumericSettingAssessmentTest, SpreadIsJudgedByItsWorseEnd)
{
    const NumericSettingAssessment assessment(10.0, tolerance({}, symmetric(1.0)));
    const struct {
        double low;
        double high;
        bool expected;
        double expectedAbsolute;
    } rows[] = {
        {9.0, 11.0, true, -1.0},         // a tie takes the low end
        {9.5, 11.5, false, 1.5},         // the high end is farther
        {8.5, 10.5, false, -1.5},        // the low end is farther
        {9.2, std::nan(""), true, -0.8}, // a distance that is not a number takes the low end
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.low) + " .. " + std::to_string(row.high));
        Deviation deviation;
        EXPECT_EQ(row.expected, assessment.isValidMeasurment(row.low, row.high, deviation));
        EXPECT_NEAR(row.expectedAbsolute, deviation.absolute().getValue(), 1e-12);
    }
    EXPECT_EQ("0.3", NumericSettingAssessment(0.1 + 0.2, nullptr).getDisplayValue());
}

} // namespace
