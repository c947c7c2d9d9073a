#include "results/ResultString.h"

#include "ResultXmlTestHelper.h"
#include "results/ResultMultiString.h"
#include "results/StringSettingAssessment.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZemTree::ResultMultiString;
using ZemTree::ResultState;
using ZemTree::ResultString;
using ZemTree::StringAssessment;
using ZemTree::StringSettingAssessment;

std::shared_ptr<StringAssessment> valid(const std::string& text)
{
    return std::make_shared<StringSettingAssessment>(text);
}

// Only the same bytes pass; the first rejected text is the measurement.
TEST(ResultStringTest, FirstRejectedTextIsTheMeasurement)
{
    const struct {
        const char* text;
        std::vector<std::string> measurments;
        std::shared_ptr<StringAssessment> assessment;
        ResultState state;
        std::string measurment;
    } rows[] = {
        {"second rejected", {"a", "b"}, valid("a"), ResultState::NotOk, "b"},
        {"first of several rejected", {"ok", "x", "y"}, valid("ok"), ResultState::NotOk, "x"},
        {"all accepted", {"норма", "норма"}, valid("норма"), ResultState::Ok, "норма"},
        {"empty valid text", {""}, valid(""), ResultState::Ok, ""},
        {"case counts", {"A"}, valid("a"), ResultState::NotOk, "A"},
        {"trailing space counts", {"On "}, valid("On"), ResultState::NotOk, "On "},
        {"embedded zero counts", {std::string("On\0", 3)}, valid("On"), ResultState::NotOk, std::string("On\0", 3)},
        {"reference reading", {"p", "q"}, nullptr, ResultState::Ok, "p"},
        {"no texts", {}, valid("a"), ResultState::Error, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const ResultString result(row.measurments, row.assessment);
        EXPECT_EQ(row.state, result.getState());
        EXPECT_EQ(row.measurment, result.getMeasurment());
    }
    const ZemTreeTest::LanguageGuard english(0);
    EXPECT_TRUE(ResultString().isEmpty());
    EXPECT_EQ("not tested", ResultString().getStateDescription());
    EXPECT_EQ("?error", ResultString({}, nullptr).getStateDescription());
}

TEST(ResultMultiStringTest, ItemsAreFoldedInKeyOrder)
{
    const auto assessment = valid("on");
    const ResultMultiString rejected({{"K1", {"on"}}, {"K2", {"off", "on"}}, {"K3", {"on"}}}, assessment);
    EXPECT_EQ(ResultState::NotOk, rejected.getState());
    EXPECT_EQ("off", rejected._items.at("K2").getMeasurment());
    EXPECT_EQ(ResultState::Ok, rejected._items.at("K3").getState());

    EXPECT_EQ(ResultState::Ok, ResultMultiString({{"K1", {"x"}}}, nullptr).getState());
    EXPECT_EQ(ResultState::Error, ResultMultiString({{"K1", {"on"}}, {"K2", {}}}, assessment).getState());
    EXPECT_EQ(ResultState::Error, ResultMultiString({}, assessment).getState());
    EXPECT_TRUE(ResultMultiString().isEmpty());
}

} // namespace
