#include "core/tree/Deviation.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using Zem::Nullable;
using ZemTree::Deviation;

struct DisplayRow {
    const char* text;
    Nullable<double> relative;
    Nullable<double> absolute;
    const char* expected;
};

TEST(DeviationTest, DisplayValueShowsTheSetPartsWithTheirSigns)
{
    const DisplayRow rows[] = {
        {"neither", {}, {}, ""},
        {"both positive", 1.25, 0.0125, "+1.25 % / +0.0125"},
        {"relative only", -3.0, {}, "-3 %"},
        {"absolute only", {}, 0.5, "+0.5"},
        {"zeros carry no sign", 0.0, -0.0, "0 % / 0"},
        {"noise of the arithmetic", {}, 10.1 - 10.0, "+0.1"},
        {"negative keeps its digits", {}, -1.23456789, "-1.23456789"},
        {"tiny is zero", {}, 1e-15, "0"},
    };
    for (const DisplayRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.expected, Deviation(row.relative, row.absolute).getDisplayValue());
    }
}

} // namespace
