#include "ResultXmlTestHelper.h"
#include "core/tree/Deviation.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/ToleranceItem.h"
#include "core/tree/ToleranceReduced.h"
#include "core/tree/ToleranceReducedTypeConverter.h"
#include "results/NumericFixedAssessment.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultMultiNumericTypeConverter.h"
#include "results/ResultNumeric.h"
#include "results/ResultNumericTypeConverter.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace ResultNumericCases {

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

} // namespace ResultNumericCases

namespace ResultNumericTypeConverterCases {

namespace {

using ZemTree::NumericAssessment;
using ZemTree::NumericSettingAssessment;
using ZemTree::RangeStructure;
using ZemTree::ResultNumeric;
using ZemTree::ResultNumericTypeConverter;
using ZemTree::ResultState;
using ZemTree::ToleranceReduced;
using ZemTreeTest::ParsedXml;
using ZemTreeTest::writtenXml;

std::string xmlOf(const ResultNumeric& result)
{
    return writtenXml([&result](xmlpp::Element* root) { ResultNumericTypeConverter::toXmlData(result, root); });
}

std::shared_ptr<ResultNumeric> read(const std::string& xml, bool expected = true)
{
    ParsedXml parsed(xml);
    std::shared_ptr<ResultNumeric> result;
    EXPECT_EQ(expected, ResultNumericTypeConverter::fromXmlData(parsed.root(), result)) << xml;
    return result;
}

std::shared_ptr<NumericAssessment> setting(double value, ToleranceReduced tolerance)
{
    return std::make_shared<NumericSettingAssessment>(value, std::make_shared<ToleranceReduced>(tolerance));
}

TEST(ResultNumericTypeConverterTest, WritesTheSettingToleranceAndRawTexts)
{
    const ResultNumeric result(
        {"9", "12.5", " 11"},
        setting(10.0, ToleranceReduced(RangeStructure::Standart(-5.0, 5.0), RangeStructure::Standart(-1.0, 1.0))));
    EXPECT_EQ("<ResultNumeric Assessment=\"Setting\"><Setting>10</Setting><Tolerance>[-5;5]|[-1;1]</Tolerance>"
              "<Values><Value>9</Value><Value>12.5</Value><Value> 11</Value></Values></ResultNumeric>",
              xmlOf(result));
    // Other assessments are not written.
    EXPECT_EQ("<ResultNumeric><Values><Value>1</Value></Values></ResultNumeric>",
              xmlOf(ResultNumeric({"1"}, std::make_shared<ZemTree::NumericFixedAssessment>(false))));
    EXPECT_EQ("<ResultNumeric/>", xmlOf(ResultNumeric()));
    // A result without texts is in Error, not empty, and keeps its (empty) list.
    EXPECT_EQ("<ResultNumeric><Values/></ResultNumeric>", xmlOf(ResultNumeric({}, nullptr)));
}

TEST(ResultNumericTypeConverterTest, ReadBackGivesTheSameVerdictAndDeviation)
{
    const ToleranceReduced tolerance(RangeStructure::Standart(-2.5, 2.5), RangeStructure::Standart(-0.1, 0.1));
    const struct {
        const char* text;
        std::vector<std::string> measurments;
        double setting;
        ResultState state;
    } rows[] = {
        {"rejected", {"10.3", "9.5"}, 10.0, ResultState::NotOk},
        {"bad number", {"10", "ten"}, 10.0, ResultState::Error},
        // A setting below the floor of the number form is saved as 0, which has no relative deviation.
        {"tiny setting", {"0.2"}, 1e-14, ResultState::NotOk},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const ResultNumeric original(row.measurments, setting(row.setting, tolerance));
        ASSERT_EQ(row.state, original.getState());
        const std::string xml = xmlOf(original);
        const std::shared_ptr<ResultNumeric> back = read(xml);
        ASSERT_NE(nullptr, back);
        EXPECT_EQ(row.state, back->getState());
        EXPECT_EQ(original.getStateDescription(), back->getStateDescription());
        EXPECT_EQ(original.getMeasurmentCollection(), back->getMeasurmentCollection());
        const auto* assessment = dynamic_cast<const NumericSettingAssessment*>(back->getAssessment());
        ASSERT_NE(nullptr, assessment);
        EXPECT_EQ(tolerance, *assessment->getTolerance());
        EXPECT_EQ(xml, xmlOf(*back));
        if (row.setting == 1e-14) {
            EXPECT_FALSE(back->getDeviation().relative().hasValue());
        }
        else {
            EXPECT_EQ(original.getDeviation(), back->getDeviation());
        }
    }
}

TEST(ResultNumericTypeConverterTest, AssessmentData)
{
    const struct {
        const char* xml;
        bool accepted;
        bool hasSetting;
        ResultState state;
    } rows[] = {
        {"<ResultNumeric Assessment=\"Setting\"><Setting>2</Setting><Tolerance>|[-1;1]</Tolerance>"
         "<Values><Value>3</Value></Values></ResultNumeric>",
         true, true, ResultState::Ok},
        {"<ResultNumeric Assessment=\"Setting\"/>", true, false, ResultState::Empty},
        // Without Setting or Tolerance there is no assessment, and reading goes on.
        {"<ResultNumeric Assessment=\"Setting\"><Setting>2</Setting><Values><Value>9</Value></Values></ResultNumeric>",
         true, false, ResultState::Ok},
        {"<ResultNumeric Assessment=\"Setting\"><Setting>abc</Setting><Tolerance>|</Tolerance>"
         "<Values><Value>9</Value></Values></ResultNumeric>",
         false, false, ResultState::Empty},
        {"<ResultNumeric Assessment=\"Setting\"><Setting>1</Setting><Tolerance>[-1;1]</Tolerance><Values/>"
         "</ResultNumeric>",
         false, false, ResultState::Empty},
        // A non-empty element must say what its assessment is, and must hold its values.
        {"<ResultNumeric><Values><Value>1</Value></Values></ResultNumeric>", false, false, ResultState::Empty},
        {"<ResultNumeric Assessment=\"Setting\"><Setting>1</Setting><Tolerance>|</Tolerance></ResultNumeric>", false,
         false, ResultState::Empty},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.xml);
        const std::shared_ptr<ResultNumeric> back = read(row.xml, row.accepted);
        if (!row.accepted) {
            EXPECT_EQ(nullptr, back);
            continue;
        }
        ASSERT_NE(nullptr, back);
        EXPECT_EQ(row.hasSetting, dynamic_cast<const NumericSettingAssessment*>(back->getAssessment()) != nullptr);
        EXPECT_EQ(row.state, back->getState());
    }
}

TEST(ResultNumericTypeConverterTest, ForeignElementIsRefusedAndValuesAreReadTolerantly)
{
    const auto kept = std::make_shared<ResultNumeric>(std::vector<std::string>{"1"}, nullptr);
    for (const char* xml : {"<ResultString/>", "<resultNumeric/>", "<ResultMultiNumeric/>"}) {
        SCOPED_TRACE(xml);
        ParsedXml parsed(xml);
        std::shared_ptr<ResultNumeric> result = kept;
        EXPECT_FALSE(ResultNumericTypeConverter::fromXmlData(parsed.root(), result));
        EXPECT_EQ(kept, result);
    }
    std::shared_ptr<ResultNumeric> result = kept;
    EXPECT_FALSE(ResultNumericTypeConverter::fromXmlData(nullptr, result));

    // The values are the texts of all element children of the first Values.
    const std::shared_ptr<ResultNumeric> back =
        read("<ResultNumeric Assessment=\"None\"><Values>\n <Value>1</Value><Other>2</Other><Value/>"
             "<!-- 9 -->text<Value>x</Value></Values><Values><Value>7</Value></Values></ResultNumeric>");
    ASSERT_NE(nullptr, back);
    EXPECT_EQ((std::vector<std::string>{"1", "2", "x"}), back->getMeasurmentCollection());
}

} // namespace

} // namespace ResultNumericTypeConverterCases

namespace ResultMultiNumericTypeConverterCases {

namespace {

using ZemTree::NumericSettingAssessment;
using ZemTree::RangeStructure;
using ZemTree::ResultMultiNumeric;
using ZemTree::ResultMultiNumericTypeConverter;
using ZemTree::ResultState;
using ZemTree::ToleranceReduced;
using ZemTreeTest::ParsedXml;
using ZemTreeTest::writtenXml;

std::string xmlOf(const ResultMultiNumeric& result)
{
    return writtenXml([&result](xmlpp::Element* root) { ResultMultiNumericTypeConverter::toXmlData(result, root); });
}

std::shared_ptr<ResultMultiNumeric> read(const std::string& xml, bool expected = true)
{
    ParsedXml parsed(xml);
    std::shared_ptr<ResultMultiNumeric> result;
    EXPECT_EQ(expected, ResultMultiNumericTypeConverter::fromXmlData(parsed.root(), result)) << xml;
    return result;
}

std::shared_ptr<NumericSettingAssessment> assessment()
{
    return std::make_shared<NumericSettingAssessment>(
        5.0,
        std::make_shared<ToleranceReduced>(RangeStructure::Standart(-10.0, 10.0), Zem::Nullable<RangeStructure>()));
}

TEST(ResultMultiNumericTypeConverterTest, ReadBackGivesTheSameItemsAndStates)
{
    const ResultMultiNumeric original({{"C", {"5"}}, {"B", {"4", "6"}}, {"A", {"5.2"}}}, assessment());
    ASSERT_EQ(ResultState::NotOk, original.getState());
    const std::string xml = xmlOf(original);
    EXPECT_EQ("<ResultMultiNumeric Assessment=\"Setting\"><Setting>5</Setting><Tolerance>[-10;10]|</Tolerance>"
              "<Items><Item Name=\"A\"><Value>5.2</Value></Item><Item Name=\"B\"><Value>4</Value><Value>6</Value>"
              "</Item><Item Name=\"C\"><Value>5</Value></Item></Items></ResultMultiNumeric>",
              xml);
    const std::shared_ptr<ResultMultiNumeric> back = read(xml);
    ASSERT_NE(nullptr, back);
    EXPECT_EQ(ResultState::NotOk, back->getState());
    EXPECT_EQ(original.getStateDescription(), back->getStateDescription());
    ASSERT_EQ(3u, back->_items.size());
    for (const auto& entry : original._items) {
        SCOPED_TRACE(entry.first);
        const ZemTree::ResultNumeric& item = back->_items.at(entry.first);
        EXPECT_EQ(entry.second.getState(), item.getState());
        EXPECT_EQ(entry.second.getDeviation(), item.getDeviation());
        EXPECT_EQ(back->getAssessment(), item.getAssessment());
    }
    EXPECT_EQ(xml, xmlOf(*back));

    EXPECT_EQ("<ResultMultiNumeric/>", xmlOf(ResultMultiNumeric()));
    const std::shared_ptr<ResultMultiNumeric> empty = read("<ResultMultiNumeric/>");
    ASSERT_NE(nullptr, empty);
    EXPECT_TRUE(empty->isEmpty());
}

TEST(ResultMultiNumericTypeConverterTest, ItemsAreReadTolerantlyButNeedTheirNames)
{
    const std::shared_ptr<ResultMultiNumeric> back =
        read("<ResultMultiNumeric><Items>\n<Item Name=\"b\"><Value>1</Value><V>2</V><Value/></Item>"
             "<Item Name=\"a\"><Value>3</Value></Item><Item Name=\"b\"><Value>9</Value></Item>"
             "<Other Name=\"c\"/></Items></ResultMultiNumeric>");
    ASSERT_NE(nullptr, back);
    EXPECT_EQ(nullptr, back->getAssessment());
    ASSERT_EQ(3u, back->_items.size());
    EXPECT_EQ((std::vector<std::string>{"1", "2"}), back->_items.at("b").getMeasurmentCollection());
    EXPECT_EQ((std::vector<std::string>{"3"}), back->_items.at("a").getMeasurmentCollection());
    // An item without texts is in Error, and so is the whole; so is a result without items.
    EXPECT_EQ(ResultState::Error, back->_items.at("c").getState());
    EXPECT_EQ(ResultState::Error, back->getState());
    const std::shared_ptr<ResultMultiNumeric> noItems = read("<ResultMultiNumeric><Items/></ResultMultiNumeric>");
    ASSERT_NE(nullptr, noItems);
    EXPECT_EQ(ResultState::Error, noItems->getState());

    for (const char* xml :
         {"<ResultMultiNumeric><Items><Item><Value>1</Value></Item></Items></ResultMultiNumeric>",
          "<ResultMultiNumeric><Item Name=\"a\"><Value>1</Value></Item></ResultMultiNumeric>",
          "<ResultMultiNumeric Assessment=\"Setting\"><Setting>x</Setting><Tolerance>|</Tolerance><Items/>"
          "</ResultMultiNumeric>",
          "<ResultNumeric/>"}) {
        SCOPED_TRACE(xml);
        EXPECT_EQ(nullptr, read(xml, false));
    }
}

} // namespace

} // namespace ResultMultiNumericTypeConverterCases

namespace NumericSettingAssessmentCases {

namespace {

using Zem::Nullable;
using ZemTree::Deviation;
using ZemTree::NumericSettingAssessment;
using ZemTree::RangeStructure;
using ZemTree::ToleranceReduced;

std::shared_ptr<ToleranceReduced> tolerance(Nullable<RangeStructure> relative, Nullable<RangeStructure> absolute)
{
    return std::make_shared<ToleranceReduced>(relative, absolute);
}

RangeStructure symmetric(double half)
{
    return RangeStructure::Standart(-half, half);
}

struct AssessRow {
    const char* text;
    double setting;
    Nullable<RangeStructure> relative;
    Nullable<RangeStructure> absolute;
    double measurment;
    bool expected;
    Nullable<double> expectedRelative;
    Nullable<double> expectedAbsolute;
};

TEST(NumericSettingAssessmentTest, OneValuePassesEitherRange)
{
    const AssessRow rows[] = {
        {"relative passes, absolute fails", 10.0, symmetric(5.0), symmetric(0.1), 10.4, true, 4.0, 10.4 - 10.0},
        {"both fail", 10.0, symmetric(1.0), symmetric(0.1), 9.5, false, -5.0, -0.5},
        {"neither range fails every value", 10.0, {}, {}, 10.0, false, {}, {}},
        {"rounded percentage passes at 5.004", 100.0, symmetric(5.0), {}, 105.004, true, 5.0, {}},
        {"rounded percentage fails at 5.006", 100.0, symmetric(5.0), {}, 105.006, false, 5.01, {}},
        {"asymmetric range", 10.0, RangeStructure::Standart(0.0, 5.0), {}, 9.9, false, -1.0, {}},
        {"setting zero, relative only", 0.0, symmetric(5.0), {}, 0.0, false, {}, {}},
        {"setting zero, both ranges", 0.0, symmetric(5.0), symmetric(0.5), 0.3, true, {}, 0.3},
    };
    for (const AssessRow& row : rows) {
        SCOPED_TRACE(row.text);
        const NumericSettingAssessment assessment(row.setting, tolerance(row.relative, row.absolute));
        Deviation deviation(99.0, 99.0);
        EXPECT_EQ(row.expected, assessment.isValidMeasurment(row.measurment, deviation));
        ASSERT_EQ(row.expectedRelative.hasValue(), deviation.relative().hasValue());
        if (row.expectedRelative.hasValue()) {
            EXPECT_DOUBLE_EQ(row.expectedRelative.getValue(), deviation.relative().getValue());
        }
        ASSERT_EQ(row.expectedAbsolute.hasValue(), deviation.absolute().hasValue());
        if (row.expectedAbsolute.hasValue()) {
            EXPECT_DOUBLE_EQ(row.expectedAbsolute.getValue(), deviation.absolute().getValue());
        }
    }
    // A null tolerance admits the setting alone.
    Deviation deviation;
    EXPECT_TRUE(NumericSettingAssessment(10.0, nullptr).isValidMeasurment(10.0, deviation));
    EXPECT_FALSE(NumericSettingAssessment(10.0, nullptr).isValidMeasurment(10.1, deviation));
}

TEST(NumericSettingAssessmentTest, NotANumberFailsAndStillWritesTheDeviation)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const NumericSettingAssessment assessment(10.0, tolerance(symmetric(5.0), symmetric(1.0)));
    Deviation deviation;
    EXPECT_FALSE(assessment.isValidMeasurment(nan, deviation));
    EXPECT_TRUE(deviation.relative().hasValue());
    EXPECT_TRUE(std::isnan(deviation.absolute().getValue()));

    // A setting that is not a number counts as non-zero: the relative part is there, and nothing passes.
    const NumericSettingAssessment nanSetting(nan, tolerance(symmetric(5.0), {}));
    EXPECT_FALSE(nanSetting.isValidMeasurment(1.0, deviation));
    EXPECT_TRUE(deviation.relative().hasValue());
}

TEST(NumericSettingAssessmentTest, SpreadIsJudgedByItsWorseEnd)
{
    const NumericSettingAssessment assessment(10.0, tolerance({}, symmetric(1.0)));
    const struct {
        double low;
        double high;
        bool expected;
        double expectedAbsolute;
    } rows[] = {
        {9.0, 11.0, true, -1.0},         // a tie takes the low end
        {9.5, 11.5, false, 1.5},         // the high end is farther
        {8.5, 10.5, false, -1.5},        // the low end is farther
        {9.2, std::nan(""), true, -0.8}, // a distance that is not a number takes the low end
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.low) + " .. " + std::to_string(row.high));
        Deviation deviation;
        EXPECT_EQ(row.expected, assessment.isValidMeasurment(row.low, row.high, deviation));
        EXPECT_NEAR(row.expectedAbsolute, deviation.absolute().getValue(), 1e-12);
    }
    EXPECT_EQ("0.3", NumericSettingAssessment(0.1 + 0.2, nullptr).getDisplayValue());
}

} // namespace

} // namespace NumericSettingAssessmentCases

namespace NonFiniteRefusalCases {

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

} // namespace NonFiniteRefusalCases
