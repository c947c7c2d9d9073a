#include "results/ResultMultiNumeric.h"

#include "core/tree/TreeLocalization.h"
#include "results/NumericSettingAssessment.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

using ZemTree::NumericAssessment;
using ZemTree::NumericSettingAssessment;
using ZemTree::RangeStructure;
using ZemTree::ResultMultiNumeric;
using ZemTree::ResultState;
using ZemTree::ToleranceReduced;

std::shared_ptr<NumericAssessment> tenByOne()
{
    return std::make_shared<NumericSettingAssessment>(
        10.0, std::make_shared<ToleranceReduced>(Zem::Nullable<RangeStructure>(), RangeStructure::Standart(-1.0, 1.0)));
}

TEST(ResultMultiNumericTest, ItemsAreJudgedAloneAndFoldedInKeyOrder)
{
    const int saved = lng::language;
    lng::language = 0;
    const std::shared_ptr<NumericAssessment> assessment = tenByOne();
    const struct {
        const char* text;
        std::map<std::string, std::vector<std::string>> measurments;
        ResultState state;
        std::string description;
    } rows[] = {
        {"all good", {{"Ia", {"10"}}, {"Ib", {"9.5", "10.5"}}}, ResultState::Ok, "ok"},
        {"rejected then bad", {{"a", {"12"}}, {"b", {"x"}}}, ResultState::Error, "x"},
        {"key order, not insertion order", {{"b", {"12"}}, {"a", {"y"}}}, ResultState::Error, "y"},
        {"rejected, good, rejected", {{"1", {"12"}}, {"2", {"10"}}, {"3", {"8"}}}, ResultState::NotOk, "?not ok"},
        {"item without texts", {{"a", {"10"}}, {"b", {}}}, ResultState::Error, "?error"},
        {"empty map", {}, ResultState::Error, "?error"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const ResultMultiNumeric result(row.measurments, assessment);
        EXPECT_EQ(row.state, result.getState());
        EXPECT_EQ(row.description, result.getStateDescription());
        EXPECT_EQ(row.measurments.size(), result._items.size());
        EXPECT_EQ(assessment.get(), result.getAssessment());
        for (const auto& entry : result._items)
            EXPECT_EQ(assessment.get(), entry.second.getAssessment());
    }
    lng::language = saved;
}

TEST(ResultMultiNumericTest, EachItemKeepsItsOwnDeviation)
{
    const ResultMultiNumeric result({{"a", {"9"}}, {"b", {"12"}}}, tenByOne());
    EXPECT_EQ(ResultState::Ok, result._items.at("a").getState());
    EXPECT_DOUBLE_EQ(-1.0, result._items.at("a").getDeviation().absolute().getValue());
    EXPECT_EQ(ResultState::NotOk, result._items.at("b").getState());
    EXPECT_DOUBLE_EQ(2.0, result._items.at("b").getDeviation().absolute().getValue());
}

TEST(ResultMultiNumericTest, RejectionTextIsTakenInTheLanguageOfTheMoment)
{
    const int saved = lng::language;
    lng::language = 1;
    const ResultMultiNumeric result({{"a", {"12"}}}, tenByOne());
    lng::language = 0;
    EXPECT_EQ("?не в норме", result.getStateDescription());
    EXPECT_EQ("?not ok", result._items.at("a").getStateDescription());
    lng::language = saved;
}

TEST(ResultMultiNumericTest, DefaultIsEmpty)
{
    const ResultMultiNumeric empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_TRUE(empty._items.empty());
    EXPECT_EQ(nullptr, empty.getAssessment());
}

} // namespace
