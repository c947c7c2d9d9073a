#include "results/ResultStringTypeConverter.h"

#include "ResultXmlTestHelper.h"
#include "results/ResultMultiString.h"
#include "results/ResultMultiStringTypeConverter.h"
#include "results/ResultString.h"
#include "results/StringSettingAssessment.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using ZemTree::ResultMultiString;
using ZemTree::ResultMultiStringTypeConverter;
using ZemTree::ResultState;
using ZemTree::ResultString;
using ZemTree::ResultStringTypeConverter;
using ZemTree::StringSettingAssessment;
using ZemTreeTest::ParsedXml;
using ZemTreeTest::writtenXml;

template <class Converter, class Result> std::string xmlOf(const Result& result)
{
    return writtenXml([&result](xmlpp::Element* root) { Converter::toXmlData(result, root); });
}

template <class Converter, class Result> std::shared_ptr<Result> read(const std::string& xml, bool expected)
{
    ParsedXml parsed(xml);
    std::shared_ptr<Result> result;
    EXPECT_EQ(expected, Converter::fromXmlData(parsed.root(), result)) << xml;
    return result;
}

const auto single = xmlOf<ResultStringTypeConverter, ResultString>;
const auto multi = xmlOf<ResultMultiStringTypeConverter, ResultMultiString>;

std::shared_ptr<ResultString> readSingle(const std::string& xml, bool expected = true)
{
    return read<ResultStringTypeConverter, ResultString>(xml, expected);
}

std::shared_ptr<ResultMultiString> readMulti(const std::string& xml, bool expected = true)
{
    return read<ResultMultiStringTypeConverter, ResultMultiString>(xml, expected);
}

TEST(ResultStringTypeConverterTest, WritesAndReadsBack)
{
    const ResultString original({"on", "off"}, std::make_shared<StringSettingAssessment>("on"));
    const std::string xml = single(original);
    EXPECT_EQ("<ResultString Assessment=\"Setting\" Valid=\"on\"><Values><Value>on</Value><Value>off</Value>"
              "</Values></ResultString>",
              xml);
    const std::shared_ptr<ResultString> back = readSingle(xml);
    ASSERT_NE(nullptr, back);
    EXPECT_EQ(ResultState::NotOk, back->getState());
    EXPECT_EQ("off", back->getMeasurment());
    ASSERT_NE(nullptr, back->getAssessment());
    EXPECT_EQ("on", back->getAssessment()->getValidValue());
    EXPECT_EQ(xml, single(*back));

    EXPECT_EQ("<ResultString><Values><Value>x</Value></Values></ResultString>", single(ResultString({"x"}, nullptr)));
    EXPECT_EQ("<ResultString/>", single(ResultString()));
}

TEST(ResultStringTypeConverterTest, AssessmentAndMalformedInput)
{
    const std::shared_ptr<ResultString> empty = readSingle("<ResultString Assessment=\"Setting\"/>");
    ASSERT_NE(nullptr, empty);
    EXPECT_TRUE(empty->isEmpty());

    const std::shared_ptr<ResultString> emptyValid =
        readSingle("<ResultString Assessment=\"Setting\" Valid=\"\"><Values><Value>a</Value></Values></ResultString>");
    ASSERT_NE(nullptr, emptyValid);
    EXPECT_EQ(ResultState::NotOk, emptyValid->getState());

    const std::shared_ptr<ResultString> noAssessment =
        readSingle("<ResultString Valid=\"b\"><Values><Value>a</Value></Values></ResultString>");
    ASSERT_NE(nullptr, noAssessment);
    EXPECT_EQ(nullptr, noAssessment->getAssessment());
    EXPECT_EQ(ResultState::Ok, noAssessment->getState());

    for (const char* xml : {"<ResultString Assessment=\"Setting\"><Values><Value>a</Value></Values></ResultString>",
                            "<ResultString><Value>a</Value></ResultString>", "<ResultNumeric/>"}) {
        SCOPED_TRACE(xml);
        EXPECT_EQ(nullptr, readSingle(xml, false));
    }
}

TEST(ResultMultiStringTypeConverterTest, WritesAndReadsBack)
{
    const ResultMultiString original({{"K2", {"1"}}, {"K1", {"0", "1"}}},
                                     std::make_shared<ZemTree::StringSettingAssessment>("1"));
    ASSERT_EQ(ResultState::NotOk, original.getState());
    const std::string xml = multi(original);
    EXPECT_EQ("<ResultMultiString Assessment=\"Setting\" Valid=\"1\"><Items><Item Name=\"K1\"><Value>0</Value>"
              "<Value>1</Value></Item><Item Name=\"K2\"><Value>1</Value></Item></Items></ResultMultiString>",
              xml);
    const std::shared_ptr<ResultMultiString> back = readMulti(xml);
    ASSERT_NE(nullptr, back);
    EXPECT_EQ(ResultState::NotOk, back->getState());
    EXPECT_EQ("0", back->_items.at("K1").getMeasurment());
    EXPECT_EQ(xml, multi(*back));
    EXPECT_EQ("<ResultMultiString/>", multi(ResultMultiString()));
}

TEST(ResultMultiStringTypeConverterTest, MalformedInputIsRefused)
{
    const std::shared_ptr<ResultMultiString> empty = readMulti("<ResultMultiString/>");
    ASSERT_NE(nullptr, empty);
    EXPECT_TRUE(empty->isEmpty());

    for (const char* xml : {"<ResultMultiString Assessment=\"Setting\"><Items/></ResultMultiString>",
                            "<ResultMultiString><Items><Item/></Items></ResultMultiString>",
                            "<ResultMultiString><Values/></ResultMultiString>", "<ResultString/>"}) {
        SCOPED_TRACE(xml);
        EXPECT_EQ(nullptr, readMulti(xml, false));
    }
}

} // namespace
