#include "core/tree/Deviation.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/ToleranceItem.h"
#include "core/tree/ToleranceReduced.h"
#include "core/tree/ToleranceReducedTypeConverter.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultNumeric.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZemTree::RangeStructure;
using ZemTree::ResultState;
using ZemTree::ToleranceReduced;

const double inf = std::numeric_limits<double>::infinity();
const double nan = std::numeric_limits<double>::quiet_NaN();

} // namespace

// A tolerance, a setting or a measurement that is not finite never lets a value pass: an infinite tolerance
// would otherwise pass everything, which is the one fault an assessment must not have.
TEST(NonFiniteRefusalTest, AssessmentPassesNothingThatIsNotFinite)
{
    const struct {
        const char* text;
        double setting;
        Zem::Nullable<RangeStructure> relative;
        Zem::Nullable<RangeStructure> absolute;
        double measurment;
        bool expected;
    } rows[] = {
        {"finite reference", 1.0, RangeStructure::Standart(-5, 5), {}, 1.03, true},
        {"infinite relative tolerance", 1.0, RangeStructure::Standart(-inf, inf), {}, 1.9, false},
        {"infinite upper bound only", 1.0, RangeStructure::Standart(-5, inf), {}, 1.0, false},
        {"infinite absolute tolerance", 1.0, {}, RangeStructure::Standart(-inf, inf), 1000.0, false},
        {"infinite relative, finite absolute decides", 1.0, RangeStructure::Standart(-inf, inf),
         RangeStructure::Standart(-0.1, 0.1), 1.05, true},
        {"infinite measurement", 1.0, RangeStructure::Standart(-5, 5), RangeStructure::Standart(-1, 1), inf, false},
        {"nan measurement", 1.0, RangeStructure::Standart(-5, 5), RangeStructure::Standart(-1, 1), nan, false},
        {"infinite setting", inf, RangeStructure::Standart(-5, 5), RangeStructure::Standart(-1, 1), inf, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const ZemTree::NumericSettingAssessment assessment(
            row.setting, std::make_shared<ToleranceReduced>(row.relative, row.absolute));
        ZemTree::Deviation deviation;
        EXPECT_EQ(row.expected, assessment.isValidMeasurment(row.measurment, deviation));
    }
}

// Measured texts that are infinite are refused like any text that is no number: state Error, with the text as the
// reason, whatever the tolerance.
TEST(NonFiniteRefusalTest, MeasuredTextsThatAreNotFiniteAreErrors)
{
    const auto generous = std::make_shared<ZemTree::NumericSettingAssessment>(
        1.0, std::make_shared<ToleranceReduced>(RangeStructure::Standart(-1e9, 1e9), Zem::Nullable<RangeStructure>()));
    const struct {
        std::vector<std::string> texts;
        ResultState state;
        const char* message;
    } rows[] = {
        {{"1.01"}, ResultState::Ok, ""},
        {{"inf"}, ResultState::Error, "inf"},
        {{"1.0", "-inf"}, ResultState::Error, "-inf"},
        {{"1e999"}, ResultState::Error, "1e999"},
        // Not a number is measured and fails its assessment.
        {{"nan", "1.0"}, ResultState::NotOk, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.texts.front());
        const ZemTree::ResultNumeric result(row.texts, generous);
        EXPECT_EQ(row.state, result.getState());
        if (row.state == ResultState::Error) {
            EXPECT_EQ(row.message, result.getStateDescription());
        }
    }
}

// A reduced tolerance read from a file has finite deviation ranges or is not read at all, so a saved result
// cannot come back with a tolerance that passes everything.
TEST(NonFiniteRefusalTest, ToleranceTextsWithInfiniteDeviationsAreRefused)
{
    const struct {
        const char* text;
        bool isRead;
    } rows[] = {
        {"[-5;5]|[-0.1;0.1]", true}, {"|", true},          {"[]|", true},
        {"[-inf;inf]|", false},      {"|[-1;inf]", false}, {"[-5;5]|[-inf;0]", false},
        {"[-1e999;1]|", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        // The same text as the deviation part of a tolerance item, whose argument range may well be unbounded.
        EXPECT_EQ(row.isRead, ZemTree::ToleranceItem::tryParse(std::string("[0;inf]:") + row.text) != nullptr);
        ToleranceReduced read(RangeStructure::Standart(-7, 7), RangeStructure::Standart(-7, 7));
        const ToleranceReduced before = read;
        EXPECT_EQ(row.isRead, ZemTree::ToleranceReducedTypeConverter::fromStringData(row.text, read));
        if (!row.isRead) {
            EXPECT_TRUE(read.relative() == before.relative() && read.absolute() == before.absolute());
        }
    }
}
