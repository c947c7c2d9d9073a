#include "results/StringSettingAssessment.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using ZemTree::StringSettingAssessment;

TEST(StringSettingAssessmentTest, AcceptsOnlyTheSameBytes)
{
    const struct {
        const char* valid;
        std::string measurment;
        bool expected;
    } rows[] = {
        {"", "", true},           {"", " ", false},     {"On", "On", true},
        {"On", "on", false},      {"On", "On ", false}, {"On", std::string("On\0", 3), false},
        {"норма", "норма", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.valid) + " vs " + row.measurment);
        EXPECT_EQ(row.expected, StringSettingAssessment(row.valid).isValidMeasurment(row.measurment));
    }
}

} // namespace
