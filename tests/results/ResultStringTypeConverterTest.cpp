#include "results/ResultStringTypeConverter.h"

#include "ResultXmlTestHelper.h"
#include "results/ResultString.h"
#include "results/StringSettingAssessment.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using ZemTree::ResultState;
using ZemTree::ResultString;
using ZemTree::ResultStringTypeConverter;
using ZemTree::StringSettingAssessment;
using ZemTreeTest::ParsedXml;
using ZemTreeTest::writtenXml;

std::string xmlOf(const ResultString& result)
{
    return writtenXml([&result](xmlpp::Element* root) { ResultStringTypeConverter::toXmlData(result, root); });
}

std::shared_ptr<ResultString> read(const std::string& xml, bool expected = true)
{
    ParsedXml parsed(xml);
    std::shared_ptr<ResultString> result;
    EXPECT_EQ(expected, ResultStringTypeConverter::fromXmlData(parsed.root(), result)) << xml;
    return result;
}

TEST(ResultStringTypeConverterTest, WritesAndReadsBack)
{
    const ResultString original({"on", "off"}, std::make_shared<StringSettingAssessment>("on"));
    const std::string xml = xmlOf(original);
    EXPECT_EQ("<ResultString Assessment=\"Setting\" Valid=\"on\"><Values><Value>on</Value><Value>off</Value>"
              "</Values></ResultString>",
              xml);
    const std::shared_ptr<ResultString> back = read(xml);
    ASSERT_NE(nullptr, back);
    EXPECT_EQ(ResultState::NotOk, back->getState());
    EXPECT_EQ("off", back->getMeasurment());
    ASSERT_NE(nullptr, back->getAssessment());
    EXPECT_EQ("on", back->getAssessment()->getValidValue());
    EXPECT_EQ(xml, xmlOf(*back));

    EXPECT_EQ("<ResultString><Values><Value>x</Value></Values></ResultString>", xmlOf(ResultString({"x"}, nullptr)));
    EXPECT_EQ("<ResultString/>", xmlOf(ResultString()));
}

TEST(ResultStringTypeConverterTest, AssessmentAndMalformedInput)
{
    const std::shared_ptr<ResultString> empty = read("<ResultString Assessment=\"Setting\"/>");
    ASSERT_NE(nullptr, empty);
    EXPECT_TRUE(empty->isEmpty());

    const std::shared_ptr<ResultString> emptyValid =
        read("<ResultString Assessment=\"Setting\" Valid=\"\"><Values><Value>a</Value></Values></ResultString>");
    ASSERT_NE(nullptr, emptyValid);
    EXPECT_EQ(ResultState::NotOk, emptyValid->getState());

    const std::shared_ptr<ResultString> noAssessment =
        read("<ResultString Valid=\"b\"><Values><Value>a</Value></Values></ResultString>");
    ASSERT_NE(nullptr, noAssessment);
    EXPECT_EQ(nullptr, noAssessment->getAssessment());
    EXPECT_EQ(ResultState::Ok, noAssessment->getState());

    for (const char* xml : {"<ResultString Assessment=\"Setting\"><Values><Value>a</Value></Values></ResultString>",
                            "<ResultString><Value>a</Value></ResultString>", "<ResultNumeric/>"}) {
        SCOPED_TRACE(xml);
        EXPECT_EQ(nullptr, read(xml, false));
    }
}

} // namespace
