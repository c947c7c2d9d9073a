#include "ResultXmlTestHelper.h"
#include "results/NumericFixedAssessment.h"
#include "results/ResultMultiString.h"
#include "results/ResultMultiStringTypeConverter.h"
#include "results/ResultNumeric.h"
#include "results/ResultStateFold.h"
#include "results/ResultString.h"
#include "results/ResultStringTypeConverter.h"
#include "results/StringSettingAssessment.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZemTree::ResultMultiString;
using ZemTree::ResultState;
using ZemTree::ResultString;
using ZemTree::StringAssessment;
using ZemTree::StringSettingAssessment;

std::shared_ptr<StringAssessment> valid(const std::string& text)
{
    return std::make_shared<StringSettingAssessment>(text);
}

// Only the same bytes pass; the first rejected text is the measurement.
TEST(ResultStringTest, FirstRejectedTextIsTheMeasurement)
{
    const struct {
        const char* text;
        std::vector<std::string> measurments;
        std::shared_ptr<StringAssessment> assessment;
        ResultState state;
        std::string measurment;
    } rows[] = {
        {"second rejected", {"a", "b"}, valid("a"), ResultState::NotOk, "b"},
        {"first of several rejected", {"ok", "x", "y"}, valid("ok"), ResultState::NotOk, "x"},
        {"all accepted", {"норма", "норма"}, valid("норма"), ResultState::Ok, "норма"},
        {"empty valid text", {""}, valid(""), ResultState::Ok, ""},
        {"case counts", {"A"}, valid("a"), ResultState::NotOk, "A"},
        {"trailing space counts", {"On "}, valid("On"), ResultState::NotOk, "On "},
        {"embedded zero counts", {std::string("On\0", 3)}, valid("On"), ResultState::NotOk, std::string("On\0", 3)},
        {"reference reading", {"p", "q"}, nullptr, ResultState::Ok, "p"},
        {"no texts", {}, valid("a"), ResultState::Error, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const ResultString result(row.measurments, row.assessment);
        EXPECT_EQ(row.state, result.getState());
        EXPECT_EQ(row.measurment, result.getMeasurment());
    }
    const ZemTreeTest::LanguageGuard english(0);
    EXPECT_TRUE(ResultString().isEmpty());
    EXPECT_EQ("not tested", ResultString().getStateDescription());
    EXPECT_EQ("?error", ResultString({}, nullptr).getStateDescription());
}

TEST(ResultMultiStringTest, ItemsAreFoldedInKeyOrder)
{
    const auto assessment = valid("on");
    const ResultMultiString rejected({{"K1", {"on"}}, {"K2", {"off", "on"}}, {"K3", {"on"}}}, assessment);
    EXPECT_EQ(ResultState::NotOk, rejected.getState());
    EXPECT_EQ("off", rejected._items.at("K2").getMeasurment());
    EXPECT_EQ(ResultState::Ok, rejected._items.at("K3").getState());

    EXPECT_EQ(ResultState::Ok, ResultMultiString({{"K1", {"x"}}}, nullptr).getState());
    EXPECT_EQ(ResultState::Error, ResultMultiString({{"K1", {"on"}}, {"K2", {}}}, assessment).getState());
    EXPECT_EQ(ResultState::Error, ResultMultiString({}, assessment).getState());
    EXPECT_TRUE(ResultMultiString().isEmpty());
}

using ZemTree::ResultMultiStringTypeConverter;
using ZemTree::ResultStringTypeConverter;
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

using ZemTree::ResultNumeric;
using ZemTree::ResultStateFold;

// An item in the state given by its letter: o(k), n(ot ok), e(rror, described by the text), E(mpty).
ResultNumeric item(const std::string& code)
{
    switch (code[0]) {
    case 'o':
        return ResultNumeric({"1"}, nullptr);
    case 'n':
        return ResultNumeric({"1"}, std::make_shared<ZemTree::NumericFixedAssessment>(false));
    case 'e':
        return ResultNumeric({code}, nullptr);
    default:
        return ResultNumeric();
    }
}

TEST(ResultStateFoldTest, FoldTable)
{
    const ZemTreeTest::LanguageGuard english(0);
    const struct {
        std::vector<std::string> items;
        ResultState state;
        std::string message;
    } rows[] = {
        {{}, ResultState::Error, ""},
        {{"o"}, ResultState::Ok, ""},
        {{"n"}, ResultState::NotOk, "?not ok"},
        {{"o", "n", "o", "n"}, ResultState::NotOk, "?not ok"},
        {{"n", "e1"}, ResultState::Error, "e1"},
        {{"e1", "E"}, ResultState::Error, "e1"},
        {{"o", "E", "e1"}, ResultState::Error, ""},
        {{"n", "E", "e1"}, ResultState::Error, "?not ok"},
        {{"E"}, ResultState::Error, ""},
        {{"o", "e1", "n"}, ResultState::Error, "e1"},
    };
    for (const auto& row : rows) {
        std::string trace;
        for (const std::string& code : row.items)
            trace += code + " ";
        SCOPED_TRACE(trace);
        ResultStateFold fold;
        for (const std::string& code : row.items)
            fold.add(item(code));
        EXPECT_EQ(row.state, fold.getState());
        EXPECT_EQ(row.message, fold.getMessage());
    }
}

TEST(ResultStateFoldTest, StopsAtTheFirstErrorAndFoldsMapsInKeyOrder)
{
    ResultStateFold fold;
    EXPECT_TRUE(fold.add(item("o")));
    EXPECT_TRUE(fold.add(item("n")));
    EXPECT_FALSE(fold.add(item("e1")));
    EXPECT_FALSE(fold.add(item("e2")));
    EXPECT_EQ("e1", fold.getMessage());

    const std::map<std::string, ResultNumeric> items{{"b", item("eb")}, {"a", item("ea")}};
    EXPECT_EQ("ea", ResultStateFold::fold(items).getMessage());
}

} // namespace
