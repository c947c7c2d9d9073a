#include "results/ResultString.h"

#include "core/tree/TreeLocalization.h"
#include "results/StringSettingAssessment.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZemTree::ResultState;
using ZemTree::ResultString;
using ZemTree::StringAssessment;
using ZemTree::StringSettingAssessment;

std::shared_ptr<StringAssessment> valid(const std::string& text)
{
    return std::make_shared<StringSettingAssessment>(text);
}

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
        {"first rejected", {"a", "b"}, valid("b"), ResultState::NotOk, "a"},
        {"first of several rejected", {"ok", "x", "y"}, valid("ok"), ResultState::NotOk, "x"},
        {"all accepted", {"a", "a"}, valid("a"), ResultState::Ok, "a"},
        {"empty valid text", {""}, valid(""), ResultState::Ok, ""},
        {"case counts", {"A"}, valid("a"), ResultState::NotOk, "A"},
        {"reference reading", {"p", "q"}, nullptr, ResultState::Ok, "p"},
        {"no texts", {}, valid("a"), ResultState::Error, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const ResultString result(row.measurments, row.assessment);
        EXPECT_EQ(row.state, result.getState());
        EXPECT_EQ(row.measurment, result.getMeasurment());
        EXPECT_EQ(row.measurments, result.getMeasurmentCollection());
        EXPECT_EQ(row.assessment.get(), result.getAssessment());
    }
}

TEST(ResultStringTest, DefaultIsEmpty)
{
    const int saved = lng::language;
    lng::language = 0;
    const ResultString empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ("not tested", empty.getStateDescription());
    EXPECT_EQ("?error", ResultString({}, nullptr).getStateDescription());
    lng::language = saved;
}

} // namespace
