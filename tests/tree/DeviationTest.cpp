#include "core/tree/Deviation.h"

#include <gtest/gtest.h>
#include <limits>
#include <locale>
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
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const DisplayRow rows[] = {
        {"neither", {}, {}, ""},
        {"both positive", 1.25, 0.0125, "+1.25 % / +0.0125"},
        {"both negative", -1.25, -0.0125, "-1.25 % / -0.0125"},
        {"relative only", -3.0, {}, "-3 %"},
        {"absolute only", {}, 0.5, "+0.5"},
        {"zeros carry no sign", 0.0, -0.0, "0 % / 0"},
        {"noise of the arithmetic", {}, 10.1 - 10.0, "+0.1"},
        {"negative keeps its digits", {}, -1.23456789, "-1.23456789"},
        {"large", 12345.67, {}, "+12345.67 %"},
        {"tiny is zero", {}, 1e-15, "0"},
        {"not a number", nan, {}, "nan %"},
        {"infinite", {}, -inf, "-inf"},
    };
    for (const DisplayRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.expected, Deviation(row.relative, row.absolute).getDisplayValue());
    }
}

TEST(DeviationTest, ConstructorTakesRelativeFirst)
{
    const Deviation deviation(2.0, 0.5);
    EXPECT_EQ(Nullable<double>(2.0), deviation.relative());
    EXPECT_EQ(Nullable<double>(0.5), deviation.absolute());
    EXPECT_NE(Deviation(0.5, 2.0), deviation);
    EXPECT_EQ(Deviation(), Deviation(Nullable<double>(), Nullable<double>()));
    EXPECT_NE(Deviation(), Deviation(0.0, {}));
}

// A global locale with a decimal comma and grouping, as a host program may set.
struct CommaNumpunct : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(DeviationTest, DisplayValueIgnoresTheGlobalLocale)
{
    const std::locale saved = std::locale::global(std::locale(std::locale::classic(), new CommaNumpunct));
    const std::string text = Deviation(1.25, 1234.5).getDisplayValue();
    std::locale::global(saved);
    EXPECT_EQ("+1.25 % / +1234.5", text);
}

} // namespace
