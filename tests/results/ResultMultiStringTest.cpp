#include "results/ResultMultiString.h"

#include "results/StringSettingAssessment.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

using ZemTree::ResultMultiString;
using ZemTree::ResultState;

TEST(ResultMultiStringTest, ItemsAreFoldedInKeyOrder)
{
    const auto assessment = std::make_shared<ZemTree::StringSettingAssessment>("on");
    const ResultMultiString rejected({{"K1", {"on"}}, {"K2", {"off", "on"}}, {"K3", {"on"}}}, assessment);
    EXPECT_EQ(ResultState::NotOk, rejected.getState());
    EXPECT_EQ("off", rejected._items.at("K2").getMeasurment());
    EXPECT_EQ(ResultState::Ok, rejected._items.at("K3").getState());

    EXPECT_EQ(ResultState::Ok, ResultMultiString({{"K1", {"on"}}}, assessment).getState());
    EXPECT_EQ(ResultState::Ok, ResultMultiString({{"K1", {"x"}}}, nullptr).getState());
    EXPECT_EQ(ResultState::Error, ResultMultiString({{"K1", {"on"}}, {"K2", {}}}, assessment).getState());
    EXPECT_EQ(ResultState::Error, ResultMultiString({}, assessment).getState());
    EXPECT_TRUE(ResultMultiString().isEmpty());
}

} // namespace
