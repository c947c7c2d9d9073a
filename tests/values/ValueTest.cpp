#include "values/Value.h"

#include "ValueTestSupport.h"
#include "core/common/XmlInclude.h"
#include "core/tree/Node.h"
#include "core/tree/ValueErrors.h"
#include "values/ValueSource.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ValueTest;
using ZemTree::DataConvertionError;
using ZemTree::ValueSource;

namespace {

template <class T> ValueSource<T> makeSource(const T& data)
{
    ValueSource<T> source;
    source.setData(data);
    return source;
}

// A data value on its own store, with its signals logged.
struct DataValueFixture {
    DataValueFixture()
    {
        value.makeDefault = [] { return std::make_shared<TestData>(-1); };
    }

    TestDataPtr first = std::make_shared<TestData>(1);
    ValueSource<TestDataPtr> source = makeSource(first);
    ProbeValue<TestDataPtr> value{&source};
    SignalLog<TestDataPtr> log{value};
};

std::string xmlAttributes(xmlpp::Element* element)
{
    std::string text;
    for (const xmlpp::Attribute* attribute : element->get_attributes())
        text += std::string(attribute->get_name()) + "=" + std::string(attribute->get_value()) + ";";
    return text;
}

} // namespace

TEST(ValueTest, SetDataFiresValueOutBeforeDataAndOnlyForAnotherObject)
{
    DataValueFixture f;
    const TestDataPtr second = std::make_shared<TestData>(2);

    f.value.setData(second);
    EXPECT_EQ(f.log.take(), "out(TD:2);data;");
    EXPECT_EQ(f.source.getNativeData(), second);

    // The same object edited in place is no new data; the edit itself comes through the structure signal.
    second->change(3);
    EXPECT_EQ(f.log.take(), "data;out(TD:3);");
    f.value.setData(second);
    EXPECT_EQ(f.log.take(), "");

    // An equal but distinct object is new data.
    f.value.setData(std::make_shared<TestData>(3));
    EXPECT_EQ(f.log.take(), "out(TD:3);data;");
}

TEST(ValueTest, SetDataWhileFormulaIsSourceLeavesValueOut)
{
    DataValueFixture f;
    f.value.setIsFormulaSource(true);
    f.log.take();
    const int computations = f.value.computations;

    f.value.setData(std::make_shared<TestData>(5));
    EXPECT_EQ(f.log.take(), "data;");
    EXPECT_EQ(f.value.computations, computations);
}

TEST(ValueTest, SetFormulaAndFlagFireValueOutFirstAndIgnoreEqualInput)
{
    ZemTree::Node context("Context");
    ValueSource<double> source;
    source.setData(4.0);
    ProbeValue<double> value(&source, &context);
    SignalLog<double> log(value);

    value.setFormula("1+2");
    EXPECT_EQ(log.take(), "formula;") << "the data is the source, so the value out stays";
    value.setFormula("1+2");
    EXPECT_EQ(log.take(), "");

    value.setIsFormulaSource(true);
    EXPECT_EQ(log.take(), "out(3);flag;");
    value.setIsFormulaSource(true);
    EXPECT_EQ(log.take(), "");

    value.setFormula("2*5");
    EXPECT_EQ(log.take(), "out(10);formula;");

    value.setIsFormulaSource(false);
    EXPECT_EQ(log.take(), "out(4);flag;");
    EXPECT_EQ(source.getFormula(), "2*5") << "a formula that is switched off stays";
}

TEST(ValueTest, EmptyFormulaAsSourceGivesDefaultWithConvertionError)
{
    ZemTree::Node context("Context");
    ValueSource<TestDataPtr> source;
    ProbeValue<TestDataPtr> value(&source, &context);
    value.makeDefault = [] { return std::make_shared<TestData>(-1); };
    value.setFormula("\"TD:8\"");
    value.setIsFormulaSource(true);
    ASSERT_EQ(value.getError(), nullptr);
    EXPECT_EQ(value.getValue()->getNumber(), 8);

    SignalLog<TestDataPtr> log(value);
    value.setFormula("");
    EXPECT_EQ(log.take(), "out(TD:-1);formula;");
    EXPECT_EQ(value.getError(), DataConvertionError::getInstance());
}

TEST(ValueTest, StructureSignalFollowsTheStoredObject)
{
    DataValueFixture f;
    f.first->change(5);
    EXPECT_EQ(f.log.take(), "data;out(TD:5);") << "the object of the store is followed from the start";
    const TestDataPtr second = std::make_shared<TestData>(2);
    f.value.setData(second);
    f.log.take();

    f.first->change(10);
    EXPECT_EQ(f.log.take(), "") << "the former object is no longer followed";

    // An edit in place is reported also while the formula is the source.
    f.value.setIsFormulaSource(true);
    f.log.take();
    second->change(20);
    EXPECT_EQ(f.log.take(), "data;out(TD:-1);");
}

TEST(ValueTest, ValueOutIsComputedOnlyWhenSomebodyListensOrReads)
{
    ValueSource<double> source;
    ProbeValue<double> value(&source);

    value.setData(1.0);
    value.setData(2.0);
    EXPECT_EQ(value.computations, 0) << "nobody listens: the cache is only dropped";
    EXPECT_EQ(value.getValue(), 2.0);
    EXPECT_EQ(value.getValue(), 2.0);
    EXPECT_EQ(value.computations, 1);

    // With a listener the record is computed before the slot runs, once per change.
    std::vector<int> seen;
    value.signalValueOutChanged.connect([&] {
        seen.push_back(value.computations);
        EXPECT_EQ(value.getValue(), 3.0);
    });
    value.setData(3.0);
    EXPECT_EQ(seen, std::vector<int>{2});
    EXPECT_EQ(value.getValue(), 3.0);
    EXPECT_EQ(value.computations, 2);
}

TEST(ValueTest, ReadingAnEmptyStoreWritesTheDefaultOnceAndSilently)
{
    ValueSource<TestDataPtr> source;
    ProbeValue<TestDataPtr> value(&source);
    value.makeDefault = [] { return std::make_shared<TestData>(7); };
    SignalLog<TestDataPtr> log(value);

    const TestDataPtr first = value.getNativeData();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->getNumber(), 7);
    EXPECT_EQ(source.getNativeData(), first);
    EXPECT_EQ(value.getNativeData(), first);
    EXPECT_EQ(log.take(), "");

    // The written default is followed like any other data object.
    value.signalValueOutChanged.connect([] {});
    first->change(8);
    EXPECT_EQ(log.take(), "data;out(TD:8);");
}

TEST(ValueTest, SwitchValueSourceSignalsOnlyDifferences)
{
    struct Row {
        const char* text;
        bool otherFlag;
        bool otherData;
        bool otherFormula;
        const char* expected;
    };
    const Row rows[] = {
        {"alike", false, false, false, ""},
        {"flag", true, false, false, "out(TD:-1);flag;"},
        {"data", false, true, false, "out(TD:2);data;"},
        {"formula", false, false, true, "out(TD:1);formula;"},
        {"all", true, true, true, "out(TD:-1);flag;data;formula;"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        DataValueFixture f;
        ValueSource<TestDataPtr> other;
        other.setData(row.otherData ? std::make_shared<TestData>(2) : f.first);
        other.setIsFormulaSource(row.otherFlag);
        other.setFormula(row.otherFormula ? "{missing}" : "");
        f.value.getValue();

        f.value._switchValueSource(&other);
        EXPECT_EQ(f.log.take(), row.expected);
    }
}

TEST(ValueTest, SwitchBetweenAlikeStoresRenewsTheSubscription)
{
    DataValueFixture f;
    const TestDataPtr second = std::make_shared<TestData>(2);
    // Behind the value's back both stores come to hold the second object.
    f.source.setData(second);
    ValueSource<TestDataPtr> other;
    other.setData(second);

    f.value._switchValueSource(&other);
    EXPECT_EQ(f.log.take(), "");
    f.first->change(5);
    EXPECT_EQ(f.log.take(), "");
    second->change(6);
    EXPECT_EQ(f.log.take(), "data;out(TD:6);");
}

TEST(ValueTest, SwitchToOtherDataKeepsTheFormerSubscription)
{
    DataValueFixture f;
    const TestDataPtr second = std::make_shared<TestData>(2);
    ValueSource<TestDataPtr> other;
    other.setData(second);

    f.value._switchValueSource(&other);
    EXPECT_EQ(f.log.take(), "out(TD:2);data;");
    second->change(3);
    EXPECT_EQ(f.log.take(), "");
    f.first->change(4);
    EXPECT_EQ(f.log.take(), "data;out(TD:3);");

    // The next setData moves the subscription.
    const TestDataPtr third = std::make_shared<TestData>(9);
    f.value.setData(third);
    f.log.take();
    f.first->change(5);
    third->change(10);
    EXPECT_EQ(f.log.take(), "data;out(TD:10);");
}

TEST(ValueTest, SwitchToOrFromNoStoreFiresNothing)
{
    DataValueFixture f;
    f.value._switchValueSource(nullptr);
    EXPECT_EQ(f.log.take(), "");
    f.first->change(2);
    EXPECT_EQ(f.log.take(), "") << "without a store nothing is followed";

    ValueSource<TestDataPtr> other;
    other.setData(std::make_shared<TestData>(3));
    other.setIsFormulaSource(true);
    f.value._switchValueSource(&other);
    EXPECT_EQ(f.log.take(), "");
    other.getNativeData()->change(4);
    EXPECT_EQ(f.log.take(), "data;out(TD:-1);");
}

TEST(ValueTest, SwitchSettlesTheEvaluatorOfTheNewStore)
{
    ZemTree::Node context("Context");
    ValueSource<double> source;
    ProbeValue<double> value(&source, &context);
    value.signalValueOutChanged.connect([] {});

    ValueSource<double> other;
    other.setIsFormulaSource(true);
    other.setFormula("6*7");
    value._switchValueSource(&other);
    EXPECT_EQ(value.getError(), nullptr);
    EXPECT_EQ(value.getValue(), 42.0);
}

TEST(ValueTest, FormulaResultsConvertToTheValueType)
{
    struct Row {
        const char* formula;
        const char* expected;
        bool isError;
    };
    const Row textRows[] = {
        {"\"abc\" + \"d\"", "abcd", false},
        {"1.5*2", "3", false},
        {"1+", "", true},
    };
    ZemTree::Node context("Context");
    for (const Row& row : textRows) {
        SCOPED_TRACE(row.formula);
        ValueSource<std::string> source;
        source.setIsFormulaSource(true);
        ProbeValue<std::string> value(&source, &context);
        value.setFormula(row.formula);
        EXPECT_EQ(value.getValue(), row.expected);
        // A formula that does not parse is a formula error, not a conversion error.
        if (row.isError)
            EXPECT_NE(dynamic_cast<const ZemTree::FormulaError*>(value.getError().get()), nullptr);
        else
            EXPECT_EQ(value.getError(), nullptr);
    }

    const Row dataRows[] = {
        {"\"TD:12\"", "TD:12", false},
        {"\"nonsense\"", "TD:-1", true},
        {"12", "TD:-1", true},
    };
    for (const Row& row : dataRows) {
        SCOPED_TRACE(row.formula);
        ValueSource<TestDataPtr> source;
        source.setIsFormulaSource(true);
        ProbeValue<TestDataPtr> value(&source, &context);
        value.makeDefault = [] { return std::make_shared<TestData>(-1); };
        value.setFormula(row.formula);
        EXPECT_EQ(describe(value.getValue()), row.expected);
        if (row.isError)
            EXPECT_EQ(value.getError(), DataConvertionError::getInstance());
        else
            EXPECT_EQ(value.getError(), nullptr);
    }
}

TEST(ValueTest, ReferencedObjectIsSharedWhenTheTypeMatchesElseConvertedThroughText)
{
    ZemTree::Node root("Root");
    auto* data = root.add(std::make_unique<ProbeUnit<TestDataPtr>>("Data", std::make_shared<TestData>(4)));

    ValueSource<TestDataPtr> sameType;
    sameType.setIsFormulaSource(true);
    ProbeValue<TestDataPtr> sharing(&sameType, &root);
    sharing.setFormula("{Data}");
    EXPECT_EQ(sharing.getError(), nullptr);
    EXPECT_EQ(sharing.getValue(), data->getValue());

    ValueSource<std::string> text;
    text.setIsFormulaSource(true);
    ProbeValue<std::string> asText(&text, &root);
    asText.setFormula("{Data}");
    EXPECT_EQ(asText.getError(), nullptr);
    EXPECT_EQ(asText.getValue(), "TD:4");

    // "TD:4" is no number.
    ValueSource<double> number;
    number.setIsFormulaSource(true);
    ProbeValue<double> asNumber(&number, &root);
    asNumber.setFormula("{Data}");
    EXPECT_EQ(asNumber.getError(), DataConvertionError::getInstance());
    EXPECT_EQ(asNumber.getValue(), 0.0);
}

TEST(ValueTest, FormulasWakingEachOtherStopAfterAFewRounds)
{
    ZemTree::Node root("Root");
    auto* a = root.add(std::make_unique<ProbeUnit<double>>("A", 1.0));
    auto* b = root.add(std::make_unique<ProbeUnit<double>>("B", 2.0));
    int signals = 0;
    a->signalValueOutChanged.connect([&signals] { ++signals; });
    b->signalValueOutChanged.connect([&signals] { ++signals; });
    a->setFormula("{../B}+1");
    b->setFormula("{../A}+1");
    a->setIsFormulaSource(true);
    signals = 0;
    b->setIsFormulaSource(true);
    EXPECT_GT(signals, 1) << "the two units do wake each other";
    EXPECT_LT(signals, 100);
}

TEST(ValueTest, ValueXmlWritesSourceAndFormulaAndData)
{
    struct Row {
        const char* text;
        bool isFormulaSource;
        const char* formula;
        const char* expected;
    };
    const Row rows[] = {
        {"data, no formula", false, "", "Data=TD:3;"},
        {"data, formula kept", false, "1+1", "Formula=1+1;Data=TD:3;"},
        {"formula", true, "2", "Source=Formula;Formula=2;Data=TD:3;"},
        {"flag without formula", true, "", "Source=Formula;Data=TD:3;"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ValueSource<TestDataPtr> written;
        written.setData(std::make_shared<TestData>(3));
        written.setIsFormulaSource(row.isFormulaSource);
        written.setFormula(row.formula);
        ProbeValue<TestDataPtr> value(&written);
        xmlpp::Document document;
        xmlpp::Element* const element = document.create_root_node("Value");
        value._getValueXml(&written, element);
        EXPECT_EQ(xmlAttributes(element), row.expected);

        ValueSource<TestDataPtr> read;
        read.setFormula("old");
        read.setIsFormulaSource(!row.isFormulaSource);
        SignalLog<TestDataPtr> log(value);
        value._setValueXml(&read, element);
        EXPECT_EQ(read.getIsFormulaSource(), row.isFormulaSource);
        EXPECT_EQ(read.getFormula(), row.formula);
        EXPECT_EQ(describe(read.getNativeData()), "TD:3");
        EXPECT_EQ(log.text, "") << "reading goes straight into the store";
    }
}

TEST(ValueTest, ValueXmlReadingIsTolerantAndStopsAtBadData)
{
    ValueSource<double> source;
    source.setData(9.0);
    ProbeValue<double> value(&source);
    xmlpp::Document document;
    xmlpp::Element* const element = document.create_root_node("Value");
    element->set_attribute("Source", "formula");
    element->set_attribute("Formula", "3");
    element->set_attribute("Data", "not a number");

    ValueSource<double> read;
    read.setIsFormulaSource(true);
    EXPECT_THROW(value._setValueXml(&read, element), std::runtime_error);
    EXPECT_FALSE(read.getIsFormulaSource()) << "only the exact word selects the formula";
    EXPECT_EQ(read.getFormula(), "3") << "fields read before the failure keep their content";
    EXPECT_EQ(read.getNativeData(), 0.0);
}

TEST(ValueTest, FormulaTextNamesNodesByRelativePath)
{
    ZemTree::Node root("Root");
    ZemTree::Node* settings = root.add(std::make_unique<ZemTree::Node>("Settings"));
    ZemTree::Node* other = settings->add(std::make_unique<ZemTree::Node>("Iset"));
    ZemTree::Node* own = root.add(std::make_unique<ZemTree::Node>("Own"));
    ValueSource<double> source;
    ProbeValue<double> value(&source, own);
    const ZemTree::Node* constOther = other;
    EXPECT_EQ(value._buildFormula("max(", constOther, ", ", std::string("2"), ")"), "max({../Settings/Iset}, 2)");
    EXPECT_EQ(value._buildFormula(own), "{.}");
    EXPECT_EQ(value._buildFormula(), "");
}

TEST(ValueTest, ValueWithoutStoreRefusesWritesAndReadsDefaults)
{
    ProbeValue<double> value(nullptr);
    SignalLog<double> log(value);
    EXPECT_EQ(value.getValue(), 0.0);
    EXPECT_EQ(value.getFormula(), "");
    EXPECT_THROW(value.setData(1.0), std::logic_error);
    EXPECT_THROW(value.setFormula("1"), std::logic_error);
    EXPECT_THROW(value.setIsFormulaSource(true), std::logic_error);
    value.setData(0.0);
    EXPECT_EQ(log.text, "");
}
