#include "results/ResultNumericTypeConverter.h"

#include "ResultXmlTestHelper.h"
#include "results/NumericFixedAssessment.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultNumeric.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

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
