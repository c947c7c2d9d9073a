#include "results/ResultMultiNumericTypeConverter.h"

#include "ResultXmlTestHelper.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiNumeric.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

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
