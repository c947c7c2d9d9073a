#include "results/NumericFixedAssessment.h"

#include "core/tree/Deviation.h"
#include "results/NumericAssessment.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

using ZemTree::Deviation;
using ZemTree::NumericAssessment;
using ZemTree::NumericFixedAssessment;

TEST(NumericFixedAssessmentTest, GivesItsVerdictAndLeavesTheDeviation)
{
    for (const bool isValid : {false, true}) {
        SCOPED_TRACE(isValid);
        const std::shared_ptr<NumericAssessment> assessment = std::make_shared<NumericFixedAssessment>(isValid);
        Deviation deviation(1.5, -2.0);
        EXPECT_EQ(isValid, assessment->isValidMeasurment(1e9, deviation));
        EXPECT_EQ(isValid, assessment->isValidMeasurment(-1.0, 1e9, deviation));
        EXPECT_EQ(Deviation(1.5, -2.0), deviation);
        EXPECT_EQ("", assessment->getDisplayValue());
    }
}

} // namespace
