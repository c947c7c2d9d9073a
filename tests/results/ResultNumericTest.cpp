#include "results/ResultNumeric.h"

#include "ResultXmlTestHelper.h"
#include "results/NumericFixedAssessment.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiNumeric.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZemTree::Deviation;
using ZemTree::NumericAssessment;
using ZemTree::RangeStructure;
using ZemTree::ResultMultiNumeric;
using ZemTree::ResultNumeric;
using ZemTree::ResultState;
using ZemTree::ToleranceReduced;

std::shared_ptr<NumericAssessment> absolute(double setting, double half)
{
    return std::make_shared<ZemTree::NumericSettingAssessment>(
        setting,
        std::make_shared<ToleranceReduced>(Zem::Nullable<RangeStructure>(), RangeStructure::Standart(-half, half)));
}

TEST(ResultNumericTest, StateAndDisplayFollowTheTexts)
{
    const ZemTreeTest::LanguageGuard english(0);
    const std::shared_ptr<NumericAssessment> twoByOne = absolute(2.0, 1.0);
    const std::shared_ptr<NumericAssessment> rejectAll = std::make_shared<ZemTree::NumericFixedAssessment>(false);
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
        {"reference reading", {"7", "8"}, nullptr, ResultState::Ok, "ok", "7.5±0.5", Deviation()},
        {"fixed verdict leaves no deviation", {"1"}, rejectAll, ResultState::NotOk, "?not ok", "1", Deviation()},
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
    }
    const ResultNumeric spread({"4", "1", "2.5"}, nullptr);
    EXPECT_DOUBLE_EQ(2.5, spread.getMeasurment());
    EXPECT_DOUBLE_EQ(1.5, spread.getMeasurmentDeviation());
}

TEST(ResultNumericTest, DefaultIsEmptyAndDescribedInTheCurrentLanguage)
{
    const ZemTreeTest::LanguageGuard russian(1);
    const ResultNumeric empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(ResultState::Empty, empty.getState());
    EXPECT_EQ("не проводилась", empty.getStateDescription());
    EXPECT_EQ("?не в норме", ResultNumeric({"9"}, absolute(2.0, 1.0)).getStateDescription());
    EXPECT_EQ("норма", ResultNumeric({"9"}, nullptr).getStateDescription());
    EXPECT_EQ("?ошибка", ResultNumeric({}, nullptr).getStateDescription());
    EXPECT_FALSE(ResultNumeric({}, nullptr).isEmpty());
}

// Each item is judged alone with the shared assessment; the whole folds the items in key order.
TEST(ResultMultiNumericTest, ItemsAreJudgedAloneAndFoldedInKeyOrder)
{
    const std::shared_ptr<NumericAssessment> assessment = absolute(10.0, 1.0);
    const ResultMultiNumeric result({{"b", {"12"}}, {"a", {"9"}}, {"c", {"y"}}}, assessment);
    EXPECT_EQ(ResultState::Error, result.getState());
    EXPECT_EQ("y", result.getStateDescription());
    EXPECT_EQ(ResultState::Ok, result._items.at("a").getState());
    EXPECT_DOUBLE_EQ(-1.0, result._items.at("a").getDeviation().absolute().getValue());
    EXPECT_EQ(ResultState::NotOk, result._items.at("b").getState());
    EXPECT_DOUBLE_EQ(2.0, result._items.at("b").getDeviation().absolute().getValue());
    EXPECT_EQ(assessment.get(), result._items.at("c").getAssessment());
    EXPECT_EQ(ResultState::Error, ResultMultiNumeric({}, assessment).getState());
    EXPECT_TRUE(ResultMultiNumeric().isEmpty());

    // The rejection text is taken in the language of the moment.
    ZemTreeTest::LanguageGuard russian(1);
    const ResultMultiNumeric rejected({{"a", {"12"}}}, assessment);
    const ZemTreeTest::LanguageGuard english(0);
    EXPECT_EQ("?не в норме", rejected.getStateDescription());
    EXPECT_EQ("?not ok", rejected._items.at("a").getStateDescription());
}

} // namespace
