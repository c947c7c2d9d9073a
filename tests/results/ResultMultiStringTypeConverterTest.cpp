#include "results/ResultMultiStringTypeConverter.h"

#include "ResultXmlTestHelper.h"
#include "results/ResultMultiString.h"
#include "results/StringSettingAssessment.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using ZemTree::ResultMultiString;
using ZemTree::ResultMultiStringTypeConverter;
using ZemTree::ResultState;
using ZemTreeTest::ParsedXml;
using ZemTreeTest::writtenXml;

std::string xmlOf(const ResultMultiString& result)
{
    return writtenXml([&result](xmlpp::Element* root) { ResultMultiStringTypeConverter::toXmlData(result, root); });
}

std::shared_ptr<ResultMultiString> read(const std::string& xml, bool expected = true)
{
    ParsedXml parsed(xml);
    std::shared_ptr<ResultMultiString> result;
    EXPECT_EQ(expected, ResultMultiStringTypeConverter::fromXmlData(parsed.root(), result)) << xml;
    return result;
}

TEST(ResultMultiStringTypeConverterTest, WritesAndReadsBack)
{
    const ResultMultiString original({{"K2", {"1"}}, {"K1", {"0", "1"}}},
                                     std::make_shared<ZemTree::StringSettingAssessment>("1"));
    ASSERT_EQ(ResultState::NotOk, original.getState());
    const std::string xml = xmlOf(original);
    EXPECT_EQ("<ResultMultiString Assessment=\"Setting\" Valid=\"1\"><Items><Item Name=\"K1\"><Value>0</Value>"
              "<Value>1</Value></Item><Item Name=\"K2\"><Value>1</Value></Item></Items></ResultMultiString>",
              xml);
    const std::shared_ptr<ResultMultiString> back = read(xml);
    ASSERT_NE(nullptr, back);
    EXPECT_EQ(ResultState::NotOk, back->getState());
    EXPECT_EQ("0", back->_items.at("K1").getMeasurment());
    EXPECT_EQ(xml, xmlOf(*back));
    EXPECT_EQ("<ResultMultiString/>", xmlOf(ResultMultiString()));
}

TEST(ResultMultiStringTypeConverterTest, MalformedInputIsRefused)
{
    const std::shared_ptr<ResultMultiString> empty = read("<ResultMultiString/>");
    ASSERT_NE(nullptr, empty);
    EXPECT_TRUE(empty->isEmpty());

    for (const char* xml : {"<ResultMultiString Assessment=\"Setting\"><Items/></ResultMultiString>",
                            "<ResultMultiString><Items><Item/></Items></ResultMultiString>",
                            "<ResultMultiString><Values/></ResultMultiString>", "<ResultString/>"}) {
        SCOPED_TRACE(xml);
        EXPECT_EQ(nullptr, read(xml, false));
    }
}

} // namespace
