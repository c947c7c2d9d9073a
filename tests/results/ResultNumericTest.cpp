#include "results/ResultNumeric.h"

#include "core/tree/TreeLocalization.h"
#include "results/NumericFixedAssessment.h"
#include "results/NumericSettingAssessment.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZemTree::Deviation;
using ZemTree::NumericAssessment;
using ZemTree::NumericSettingAssessment;
using ZemTree::RangeStructure;
using ZemTree::ResultNumeric;
using ZemTree::ResultState;
using ZemTree::ToleranceReduced;

class ResultNumericTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        _savedLanguage = lng::language;
        lng::language = 0;
    }
    void TearDown() override { lng::language = _savedLanguage; }

    static std::shared_ptr<NumericAssessment> absolute(double setting, double half)
    {
        return std::make_shared<NumericSettingAssessment>(
            setting,
            std::make_shared<ToleranceReduced>(Zem::Nullable<RangeStructure>(), RangeStructure::Standart(-half, half)));
    }

private:
    int _savedLanguage = 0;
};

TEST_F(ResultNumericTest, StateAndDisplayFollowTheTexts)
{
    const std::shared_ptr<NumericAssessment> twoByOne = absolute(2.0, 1.0);
    const struct {
        const char* text;
        std::vector<std::string> measurments;
        std::shared_ptr<NumericAssessment> assessment;
        ResultState state;
        std::string description;
        std::string display;
        Deviation deviation;
    } rows[] = {
        {"spread judged by its worse end", {"1", "3"}, twoByOne, ResultState::Ok, "ok", "2±1", Deviation({}, -1.0)},
        {"spread too wide", {"3", "0.5"}, twoByOne, ResultState::NotOk, "?not ok", "1.75±1.25", Deviation({}, -1.5)},
        {"equal values have no spread", {"5", "5"}, twoByOne, ResultState::NotOk, "?not ok", "5", Deviation({}, 3.0)},
        {"one value", {"2.5"}, twoByOne, ResultState::Ok, "ok", "2.5", Deviation({}, 0.5)},
        {"reference reading", {"7", "8"}, nullptr, ResultState::Ok, "ok", "7.5±0.5", Deviation()},
        {"first bad text names the error",
         {"1", "abc", "3", "def"},
         twoByOne,
         ResultState::Error,
         "abc",
         "",
         Deviation()},
        {"empty text is no number", {"2", ""}, twoByOne, ResultState::Error, "?error", "", Deviation()},
        {"surplus characters", {"2 "}, nullptr, ResultState::Error, "2 ", "", Deviation()},
        {"no texts", {}, twoByOne, ResultState::Error, "?error", "", Deviation()},
        {"exponent form", {"1e0", "3E0"}, twoByOne, ResultState::Ok, "ok", "2±1", Deviation({}, -1.0)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const ResultNumeric result(row.measurments, row.assessment);
        EXPECT_EQ(row.state, result.getState());
        EXPECT_EQ(row.description, result.getStateDescription());
        EXPECT_EQ(row.display, result.getMeasurmentDisplayValue());
        EXPECT_EQ(row.deviation, result.getDeviation());
        EXPECT_EQ(row.measurments, result.getMeasurmentCollection());
        EXPECT_EQ(row.assessment.get(), result.getAssessment());
    }
}

TEST_F(ResultNumericTest, CentreAndHalfSpread)
{
    const ResultNumeric spread({"4", "1", "2.5"}, nullptr);
    EXPECT_DOUBLE_EQ(2.5, spread.getMeasurment());
    EXPECT_DOUBLE_EQ(1.5, spread.getMeasurmentDeviation());

    const ResultNumeric same({"0.1", "1e-1"}, nullptr);
    EXPECT_EQ(0.1, same.getMeasurment());
    EXPECT_EQ(0.0, same.getMeasurmentDeviation());
    EXPECT_EQ("0.1", same.getMeasurmentDisplayValue());
}

TEST_F(ResultNumericTest, FixedAssessmentDecidesAlone)
{
    const ResultNumeric rejected({"1"}, std::make_shared<ZemTree::NumericFixedAssessment>(false));
    EXPECT_EQ(ResultState::NotOk, rejected.getState());
    EXPECT_EQ(Deviation(), rejected.getDeviation());
    EXPECT_EQ("1", rejected.getMeasurmentDisplayValue());
    const ResultNumeric accepted({"1"}, std::make_shared<ZemTree::NumericFixedAssessment>(true));
    EXPECT_EQ(ResultState::Ok, accepted.getState());
}

TEST_F(ResultNumericTest, DefaultIsEmptyAndDescribedInTheCurrentLanguage)
{
    const ResultNumeric empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(ResultState::Empty, empty.getState());
    EXPECT_EQ(nullptr, empty.getAssessment());
    EXPECT_EQ("", empty.getMeasurmentDisplayValue());
    EXPECT_EQ("not tested", empty.getStateDescription());
    lng::language = 1;
    EXPECT_EQ("не проводилась", empty.getStateDescription());
    EXPECT_EQ("?не в норме", ResultNumeric({"9"}, absolute(2.0, 1.0)).getStateDescription());
    EXPECT_EQ("норма", ResultNumeric({"9"}, nullptr).getStateDescription());
    EXPECT_EQ("?ошибка", ResultNumeric({}, nullptr).getStateDescription());
    EXPECT_FALSE(ResultNumeric({}, nullptr).isEmpty());
}

TEST_F(ResultNumericTest, CopiesKeepTheVerdict)
{
    const ResultNumeric original({"1", "4"}, absolute(2.0, 1.0));
    const ResultNumeric copy = original;
    EXPECT_EQ(ResultState::NotOk, copy.getState());
    EXPECT_EQ(original.getDeviation(), copy.getDeviation());
    EXPECT_EQ(original.getAssessment(), copy.getAssessment());
}

} // namespace
