#include "ValueTestSupport.h"
#include "XmlTestSupport.h"
#include "core/common/XmlInclude.h"
#include "core/formula/EmbeddedFormula.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/ExtendedTypeInfo.h"
#include "core/tree/LocalString.h"
#include "core/tree/Measure.h"
#include "core/tree/Measures.h"
#include "core/tree/Node.h"
#include "core/tree/SerializationMode.h"
#include "core/tree/StringUnit.h"
#include "core/tree/TreeLocalization.h"
#include "core/tree/ValueErrors.h"
#include "values/BooleanUnit.h"
#include "values/EnumLimitedUnit.h"
#include "values/NumericUnit.h"
#include "values/Unit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ValueTest;
using ZemTree::EmbeddedFormula;
using ZemTree::ExtendedTypeInfo;
using ZemTree::Node;
using ZemTree::SerializationMode;
using ZemTreeTest::loadFromString;
using ZemTreeTest::makeMode;
using ZemTreeTest::saveToString;

namespace {

// The node type that embedded formulas of these tests wait for.
class TargetNode : public Node {
public:
    explicit TargetNode(const std::string& id) : Node(id) {}
};

// The unit element with a `Value` child holding `attributes`, e.g. R"(Data="3")".
std::string unitXml(const std::string& id, const std::string& valueAttributes, const std::string& more = "")
{
    return "<Root><Node Id=\"" + id + "\" IsActive=\"true\" IsHidden=\"false\"><Value " + valueAttributes + "/>" + more
           + "</Node></Root>";
}

xmlpp::Element* firstChild(xmlpp::Element* parent, const char* name)
{
    for (xmlpp::Node* child : parent->get_children(name)) {
        if (auto* element = dynamic_cast<xmlpp::Element*>(child))
            return element;
    }
    return nullptr;
}

std::string attribute(xmlpp::Element* element, const char* name)
{
    if (element == nullptr)
        return "<no element>";
    const xmlpp::Attribute* const found = element->get_attribute(name);
    return found != nullptr ? std::string(found->get_value()) : std::string("<none>");
}

// Root
//   Source    TargetNode
//     Iset    unit, 5
//   Settings
//     Copy    unit under test, default 1
struct EmbeddedTree {
    EmbeddedTree()
    {
        settings = root.add(std::make_unique<Node>("Settings"));
        copy = settings->add(std::make_unique<ProbeUnit<double>>("Copy", 1.0));
    }

    ProbeUnit<double>* addTarget(const std::string& id = "Source")
    {
        Node* const target = root.add(std::make_unique<TargetNode>(id));
        return target->add(std::make_unique<ProbeUnit<double>>("Iset", 5.0));
    }

    static EmbeddedFormula formula() { return EmbeddedFormula(ExtendedTypeInfo::of<TargetNode>(), "{Iset}*2"); }

    Node root{"Root"};
    Node* settings = nullptr;
    ProbeUnit<double>* copy = nullptr;
};

} // namespace

TEST(UnitTest, ValueXmlDependsOnKindAndHiddenState)
{
    struct Row {
        const char* text;
        std::uint8_t kind;
        bool hidden;
        bool editWorkingValue;
        const char* data;
        bool embedded;
    };
    const Row rows[] = {
        {"user, no working store: the default", SerializationMode::User, false, false, "1", false},
        {"user, edited: the working value", SerializationMode::User, false, true, "2", false},
        {"user, hidden: nothing", SerializationMode::User, true, true, "<no element>", false},
        {"system, hidden: the default", SerializationMode::System, true, true, "1", true},
        {"system, edited: the default", SerializationMode::System, false, true, "1", true},
        {"other kind: the default, no extras", 2, false, true, "1", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ProbeUnit<double> unit("U", 1.0);
        unit.setEmbeddedFormula(EmbeddedTree::formula());
        if (row.editWorkingValue)
            unit.setData(2.0);
        unit.setIsHidden(row.hidden);

        xmlpp::Document document;
        xmlpp::Element* const own = unit.getXml(document.create_root_node("Root"), makeMode(row.kind));
        EXPECT_EQ(attribute(firstChild(own, "Value"), "Data"), row.data);
        xmlpp::Element* const embedded = firstChild(own, "Embedded");
        EXPECT_EQ(embedded != nullptr, row.embedded);
        if (embedded != nullptr) {
            EXPECT_EQ(attribute(embedded, "Formula"), "{Iset}*2");
            EXPECT_NE(attribute(embedded, "TargetType").find("TargetNode"), std::string::npos);
        }
    }
}

TEST(UnitTest, SaveLoadSaveGivesTheSameXml)
{
    for (std::uint8_t kind : {SerializationMode::System, SerializationMode::User}) {
        SCOPED_TRACE(static_cast<int>(kind));
        ProbeUnit<TestDataPtr> unit("U", std::make_shared<TestData>(1));
        unit.setDefaultFormula("1+1");
        unit.setEmbeddedFormula(EmbeddedTree::formula());
        unit.setData(std::make_shared<TestData>(3));
        unit.setFormula("\"TD:4\"");
        unit.setIsFormulaSource(true);
        std::vector<std::string> problems;
        const std::string first = saveToString(unit, makeMode(kind, &problems));

        ProbeUnit<TestDataPtr> loaded("U");
        loadFromString(loaded, first, makeMode(kind, &problems));
        EXPECT_EQ(saveToString(loaded, makeMode(kind, &problems)), first);
        EXPECT_TRUE(problems.empty());
        if (kind == SerializationMode::User) {
            EXPECT_TRUE(loaded.getIsFormulaSource());
            EXPECT_EQ(describe(loaded.getValue()), "TD:4") << "the evaluator is settled after a load";
        }
        else {
            EXPECT_EQ(loaded.getEmbeddedFormula(), EmbeddedTree::formula());
            EXPECT_EQ(loaded.getFormula(), "1+1") << "a template load makes the working value follow the defaults";
        }
    }
}

TEST(UnitTest, HiddenUnitSkipsItsValueOnlyInProjectLoads)
{
    for (std::uint8_t kind : {SerializationMode::System, SerializationMode::User}) {
        SCOPED_TRACE(static_cast<int>(kind));
        ProbeUnit<double> unit("U", 1.0);
        unit.setIsHidden(true);
        loadFromString(unit, "<Root><Node Id=\"U\" IsHidden=\"true\"><Value Data=\"9\"/></Node></Root>",
                       makeMode(kind));
        EXPECT_EQ(unit.getValue(), kind == SerializationMode::System ? 9.0 : 1.0);
    }
}

TEST(UnitTest, BrokenValueIsReportedAndReadingGoesOn)
{
    ProbeUnit<double> unit("U", 1.0);
    std::vector<std::string> problems;
    loadFromString(unit, unitXml("U", R"(Source="Formula" Formula="2+3" Data="x")"),
                   makeMode(SerializationMode::User, &problems));
    EXPECT_EQ(problems, std::vector<std::string>{"U: Data attribute unreadable"});
    EXPECT_TRUE(unit.getIsFormulaSource());
    EXPECT_EQ(unit.getValue(), 5.0);

    // A missing element changes nothing and is no problem.
    problems.clear();
    loadFromString(unit, "<Root><Node Id=\"U\"/></Root>", makeMode(SerializationMode::User, &problems));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(unit.getValue(), 5.0);
}

TEST(UnitTest, TemplateLoadMakesTheWorkingValueFollowTheDefaults)
{
    ProbeUnit<double> unit("U", 1.0);
    unit.setData(7.0);
    SignalLog<double> log(unit);
    loadFromString(unit, unitXml("U", R"(Data="3")"), makeMode(SerializationMode::System));
    EXPECT_EQ(unit.getDefaultData(), 3.0);
    EXPECT_EQ(unit.getValue(), 3.0);
    EXPECT_EQ(log.take(), "out(7);out(3);data;");
}

TEST(UnitTest, DefaultWritesReachTheWorkingValueWhileVisible)
{
    const TestDataPtr defaultData = std::make_shared<TestData>(1);
    ProbeUnit<TestDataPtr> unit("U", defaultData);
    SignalLog<TestDataPtr> log(unit);

    const TestDataPtr next = std::make_shared<TestData>(2);
    unit.setDefaultData(next);
    EXPECT_EQ(log.take(), "out(TD:2);data;");
    EXPECT_EQ(unit.getDefaultData(), next);
    EXPECT_NE(unit.getValue(), next) << "the working value has its own clone";

    unit.setDefaultFormula("\"TD:5\"");
    unit.setDefaultIsFormulaSource(true);
    EXPECT_EQ(log.take(), "formula;out(TD:5);flag;");
    EXPECT_TRUE(unit.getDefaultIsFormulaSource());
    EXPECT_EQ(unit.getDefaultFormula(), "\"TD:5\"");
}

TEST(UnitTest, DefaultFormulaSetBeforeFirstReadingIsEvaluated)
{
    ProbeUnit<double> unit("U", 1.0);
    unit.setDefaultFormula("2*21");
    unit.setDefaultIsFormulaSource(true);
    EXPECT_EQ(unit.getError(), nullptr);
    EXPECT_EQ(unit.getValue(), 42.0);
}

TEST(UnitTest, DefaultDataOfAHiddenUnitGoesThroughTheValueWithoutClone)
{
    ProbeUnit<TestDataPtr> unit("U", std::make_shared<TestData>(1));
    unit.setIsHidden(true);
    SignalLog<TestDataPtr> log(unit);
    const int clones = unit.clones;

    const TestDataPtr next = std::make_shared<TestData>(2);
    unit.setDefaultData(next);
    EXPECT_EQ(log.take(), "out(TD:2);data;");
    EXPECT_EQ(unit.getValue(), next);
    EXPECT_EQ(unit.getDefaultData(), next);
    EXPECT_EQ(unit.clones, clones);
    EXPECT_TRUE(unit.isDefaultValueMode());
}

TEST(UnitTest, ResetValueCopiesFlagThenFormulaThenData)
{
    ProbeUnit<TestDataPtr> unit("U", std::make_shared<TestData>(1));
    unit.setData(std::make_shared<TestData>(2));
    // The defaults change behind the working value, through a hidden phase.
    unit.setIsHidden(true);
    unit.setDefaultFormula("\"TD:6\"");
    unit.setDefaultIsFormulaSource(true);
    unit.setDefaultData(std::make_shared<TestData>(3));
    unit.setIsHidden(false);
    SignalLog<TestDataPtr> log(unit);
    ASSERT_EQ(describe(unit.getValue()), "TD:2");

    unit.resetValue();
    EXPECT_EQ(log.take(), "out(null);flag;out(TD:6);formula;data;");
    EXPECT_EQ(describe(unit.getNativeData()), "TD:3");
    EXPECT_NE(unit.getNativeData(), unit.getDefaultData()) << "the data is cloned";

    unit.setIsHidden(true);
    log.take();
    unit.resetValue();
    EXPECT_EQ(log.take(), "");
}

TEST(UnitTest, HiddenFlagSwitchesBetweenDefaultAndWorkingValue)
{
    ProbeUnit<double> unit("U", 1.0);
    unit.setData(2.0);
    SignalLog<double> log(unit);

    unit.setIsHidden(true);
    EXPECT_EQ(log.take(), "out(1);data;");
    unit.setData(4.0);
    EXPECT_EQ(unit.getDefaultData(), 4.0) << "while hidden the value works on the default";
    unit.setIsHidden(false);
    EXPECT_EQ(log.take(), "out(4);data;out(2);data;");
}

TEST(UnitTest, EmbeddedFormulaWithTargetPresentIsServedAtOnce)
{
    EmbeddedTree tree;
    tree.addTarget();
    tree.copy->signalValueOutChanged.connect([] {});
    tree.copy->setEmbeddedFormula(EmbeddedTree::formula());

    EXPECT_TRUE(tree.copy->getDefaultIsFormulaSource());
    EXPECT_EQ(tree.copy->getDefaultFormula(), "{../../Source/Iset}*2");
    EXPECT_EQ(tree.copy->getValue(), 10.0);
    EXPECT_FALSE(tree.copy->isActive());
}

TEST(UnitTest, EmbeddedFormulaWaitsForItsTargetAndServesOnce)
{
    EmbeddedTree tree;
    tree.copy->setEmbeddedFormula(EmbeddedTree::formula(), true);
    EXPECT_FALSE(tree.copy->getDefaultIsFormulaSource());
    int formulaChanges = 0;
    tree.copy->signalFormulaChanged.connect([&formulaChanges] { ++formulaChanges; });

    ProbeUnit<double>* iset = tree.addTarget();
    EXPECT_EQ(formulaChanges, 1);
    EXPECT_EQ(tree.copy->getValue(), 10.0);
    EXPECT_TRUE(tree.copy->isActive()) << "told to keep its active state";

    // Served: a nearer target appearing later changes nothing.
    tree.settings->add(std::make_unique<TargetNode>("Nearer"));
    EXPECT_EQ(formulaChanges, 1);
    iset->setData(6.0);
    EXPECT_EQ(tree.copy->getValue(), 12.0);
}

TEST(UnitTest, EmbeddedFormulaWithUndefinedTargetIsOnlyStored)
{
    EmbeddedTree tree;
    const EmbeddedFormula undefined(ExtendedTypeInfo(), "{Iset}");
    tree.copy->setEmbeddedFormula(undefined);
    tree.addTarget();
    EXPECT_EQ(tree.copy->getEmbeddedFormula(), undefined);
    EXPECT_FALSE(tree.copy->getDefaultIsFormulaSource());
    EXPECT_TRUE(tree.copy->isActive());
}

TEST(UnitTest, ProjectLoadCancelsAWaitingEmbeddedFormula)
{
    EmbeddedTree tree;
    tree.copy->setEmbeddedFormula(EmbeddedTree::formula());
    loadFromString(*tree.copy, unitXml("Copy", R"(Data="1")"), makeMode(SerializationMode::User));
    tree.addTarget();
    EXPECT_FALSE(tree.copy->getDefaultIsFormulaSource());
    EXPECT_EQ(tree.copy->getValue(), 1.0);
}

TEST(UnitTest, TemplateLoadReadsTheEmbeddedElement)
{
    struct Row {
        const char* text;
        std::string embedded;
        bool isSet;
    };
    const std::string targetType =
        ZemTree::ExtendedTypeInfoTypeConverter::toStringData(EmbeddedTree::formula().getTargetType());
    const Row rows[] = {
        {"complete", "<Embedded TargetType=\"" + targetType + "\" Formula=\"{Iset}*2\"/>", true},
        {"no target type", "<Embedded Formula=\"{Iset}*2\"/>", false},
        {"no formula", "<Embedded TargetType=\"" + targetType + "\"/>", false},
        {"not there", "", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EmbeddedTree tree;
        tree.addTarget();
        std::vector<std::string> problems;
        loadFromString(*tree.copy, unitXml("Copy", R"(Data="1")", row.embedded),
                       makeMode(SerializationMode::System, &problems));
        EXPECT_TRUE(problems.empty());
        EXPECT_EQ(tree.copy->getEmbeddedFormula() == EmbeddedTree::formula(), row.isSet);
        EXPECT_EQ(tree.copy->getValue(), row.isSet ? 10.0 : 1.0);
    }
}

TEST(UnitTest, FormulaFollowsAnotherUnitLive)
{
    Node root("Root");
    auto* other = root.add(std::make_unique<ProbeUnit<double>>("Other", 5.0));
    auto* follower = root.add(std::make_unique<ProbeUnit<double>>("Follower", 0.0));
    follower->setFormula(follower->_buildFormula(other, "*2"));
    follower->setIsFormulaSource(true);
    SignalLog<double> log(*follower);

    other->setData(7.0);
    EXPECT_EQ(log.take(), "out(14);");
    other->setIsHidden(true);
    EXPECT_EQ(log.take(), "out(10);") << "the hidden unit shows its default";

    root.remove(other);
    EXPECT_NE(follower->getError(), nullptr);
    EXPECT_EQ(follower->getValue(), 0.0);
}

TEST(UnitTest, UnitTakesNoFreeChildren)
{
    ProbeUnit<double> unit("U");
    EXPECT_THROW(unit.add(std::make_unique<Node>("Child")), std::logic_error);
    EXPECT_EQ(unit.size(), 0u);
}

// The core's number, flag and text units: their shown form, bounds, saved form and what they put in a report.

namespace {

using ZemTree::BooleanUnit;
using ZemTree::LocalString;
using ZemTree::NumericUnit;

// The attributes of the unit's report element.
std::map<std::string, std::string> reportOf(const ZemTree::Node& unit)
{
    ZemTree::DisplayXmlParameters parameters("/tmp");
    xmlpp::Document document;
    xmlpp::Element* const report = document.create_root_node("Report");
    unit.getDisplayXml(parameters, report);
    std::map<std::string, std::string> attributes;
    const auto* own = dynamic_cast<const xmlpp::Element*>(report->get_children().front());
    if (own == nullptr)
        return attributes;
    for (const xmlpp::Attribute* attribute : own->get_attributes())
        attributes[attribute->get_name()] = attribute->get_value();
    return attributes;
}

class CoreUnitsTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = 0; }
};

TEST_F(CoreUnitsTest, NumbersShowAtMostTheirPrecisionWithoutTrailingZeros)
{
    const struct {
        double number;
        int precision;
        const char* shown;
    } rows[] = {
        {2.5, 6, "2.5"},         {90.0, 6, "90"},    {0.1 + 0.2, 6, "0.3"},
        {1.0 / 3.0, 3, "0.333"}, {-0.0004, 3, "0"},  {1234567.891, 0, "1234568"},
        {1e-9, 6, "0"},          {-2.25, 1, "-2.2"}, {1e20, 2, "100000000000000000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.shown);
        EXPECT_EQ(row.shown, NumericUnit::formatNumber(row.number, row.precision));
    }
    EXPECT_EQ("nan", NumericUnit::formatNumber(std::nan(""), 3));
    EXPECT_THROW(NumericUnit("N").setPrecision(16), std::logic_error);
}

TEST_F(CoreUnitsTest, NumberOutsideItsBoundsStaysButShowsTheRangeError)
{
    ZemTree::Node root("Root");
    NumericUnit* const unit = root.add(std::make_unique<NumericUnit>("Step"));
    unit->setBounds(0.0, 10.0);
    EXPECT_THROW(unit->setBounds(5.0, 1.0), std::logic_error);

    const struct {
        const char* text;
        bool isFormula;
        const char* source;
        double data;
        bool inRange;
    } rows[] = {
        {"inside", false, "", 4.0, true},
        {"on the upper bound", false, "", 10.0, true},
        {"above", false, "", 10.5, false},
        {"below", false, "", -1.0, false},
        {"a formula above", true, "6*2", 0.0, false},
        {"a formula inside", true, "6/2", 0.0, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        unit->setIsFormulaSource(row.isFormula);
        unit->setFormula(row.source);
        unit->setData(row.data);
        if (row.inRange) {
            EXPECT_EQ(nullptr, unit->getError());
            continue;
        }
        ASSERT_NE(nullptr, unit->getError());
        EXPECT_NE(nullptr, dynamic_cast<const ZemTree::OutOfRangeError*>(unit->getError().get()));
        EXPECT_NE(std::string::npos, std::string(unit->getError()->what()).find("[0; 10]"));
        if (!row.isFormula) {
            EXPECT_EQ(row.data, unit->getNativeData()) << "the number the user set stays";
        }
    }
    unit->setIsFormulaSource(false);
    unit->setData(12.0);
    unit->setBounds(Zem::Nullable<double>(), Zem::Nullable<double>());
    EXPECT_EQ(nullptr, unit->getError()) << "lifting the bounds judges the value again";
}

TEST_F(CoreUnitsTest, SavedFormsReadBackAndBrokenOnesAreReported)
{
    ZemTree::Node root("Root");
    NumericUnit* const number = root.add(std::make_unique<NumericUnit>("Number"));
    BooleanUnit* const flag = root.add(std::make_unique<BooleanUnit>("Flag"));
    number->setData(0.1234567890123);
    flag->setData(true);
    const std::string saved = saveToString(root, makeMode(SerializationMode::User));
    EXPECT_NE(std::string::npos, saved.find(R"(<Value Data="0.1234567890123"/>)")) << saved;
    EXPECT_NE(std::string::npos, saved.find(R"(<Value Data="true"/>)")) << saved;

    ZemTree::Node target("Root");
    NumericUnit* const readNumber = target.add(std::make_unique<NumericUnit>("Number"));
    BooleanUnit* const readFlag = target.add(std::make_unique<BooleanUnit>("Flag"));
    loadFromString(target, saved, makeMode(SerializationMode::User));
    EXPECT_EQ(0.1234567890123, readNumber->getValueOut().value);
    EXPECT_TRUE(readFlag->getValueOut().value);
    EXPECT_EQ(saved, saveToString(target, makeMode(SerializationMode::User)));

    const struct {
        const char* text;
        const char* xml;
        const char* problem;
    } broken[] = {
        {"a number with a comma", R"(<Node Id="Number"><Value Data="1,5"/></Node>)", "is not a number: 1,5"},
        {"a number without data", R"(<Node Id="Number"><Value/></Node>)", "has no Data"},
        {"a flag spelled as a word", R"(<Node Id="Flag"><Value Data="yes"/></Node>)", "neither true nor false"},
    };
    for (const auto& row : broken) {
        SCOPED_TRACE(row.text);
        std::vector<std::string> problems;
        loadFromString(target, std::string(R"(<Root><Node Id="Root">)") + row.xml + "</Node></Root>",
                       makeMode(SerializationMode::User, &problems));
        ASSERT_EQ(1u, problems.size());
        EXPECT_NE(std::string::npos, problems[0].find(row.problem)) << problems[0];
        EXPECT_EQ(0.1234567890123, readNumber->getValueOut().value);
        EXPECT_TRUE(readFlag->getValueOut().value);
    }
}

TEST_F(CoreUnitsTest, ReportCarriesValueMeasureFormulaAndError)
{
    ZemTree::Node root("Root");
    root.add(std::make_unique<NumericUnit>("Current", LocalString("Current"), LocalString::Empty(), 1.25,
                                           ZemTree::Measures::Ampere()));
    NumericUnit* const computed = root.add(std::make_unique<NumericUnit>("Computed"));
    NumericUnit* const broken = root.add(std::make_unique<NumericUnit>("Broken"));
    BooleanUnit* const flag = root.add(std::make_unique<BooleanUnit>("Flag"));
    computed->setFormula("{../Current}*2");
    computed->setIsFormulaSource(true);
    broken->setFormula("2*");
    broken->setIsFormulaSource(true);
    root.add(std::make_unique<ZemTree::StringUnit>("Text", LocalString("Text"), LocalString::Empty(), "SN-7"));

    for (const int language : {0, 1}) {
        lng::language = language;
        SCOPED_TRACE(language == 0 ? "English" : "Russian");
        const struct {
            const char* id;
            std::map<std::string, std::string> expected;
        } rows[] = {
            {"Current", {{"Value", "1.25"}, {"Measure", ZemTree::Measures::Ampere()->getDescription()}}},
            {"Computed", {{"Value", "2.5"}, {"Formula", "{../Current}*2"}}},
            {"Broken", {{"Formula", "2*"}}},
            {"Flag", {{"Value", lng::Tree::get("Flag.no")}}},
            {"Text", {{"Value", "SN-7"}}},
        };
        for (const auto& row : rows) {
            SCOPED_TRACE(row.id);
            const std::map<std::string, std::string> report = reportOf(*root.findChild(row.id));
            for (const auto& [name, value] : row.expected) {
                ASSERT_TRUE(report.count(name)) << name;
                EXPECT_EQ(value, report.at(name));
            }
            EXPECT_EQ(std::string(row.id) == "Broken", report.count("Error") == 1u);
        }
        EXPECT_NE(std::string(lng::Tree::get("Flag.yes")), lng::Tree::get("Flag.no"));
    }
    flag->setData(true);
    EXPECT_EQ(lng::Tree::get("Flag.yes"), reportOf(*flag).at("Value"));
}

} // namespace

using ZemTree::EnumLimiter;

namespace {

using LimitedUnit = ZemTree::EnumLimitedUnit<TestDataPtr>;

// A container that the system fixes, the way structures of the tree are fixed.
class LockableGroup : public Node {
public:
    explicit LockableGroup(const std::string& id) : Node(id) {}
    void lockContainer() { _lockContainer(); }
};

std::unique_ptr<LimitedUnit> makeUnit(Node* limiter)
{
    return std::make_unique<LimitedUnit>("Limited", LocalString::Empty(), LocalString::Empty(), limiter);
}

std::string refusalText(LimitedUnit& unit, Node* limiter)
{
    try {
        unit.setExternalLimiter(limiter);
    }
    catch (const std::runtime_error& error) {
        return error.what();
    }
    return "accepted";
}

} // namespace

TEST(EnumLimitedUnitTest, OwnLimiterIsAPropertyChildAndNeverReplaced)
{
    auto unit = makeUnit(nullptr);
    EnumLimiter* const own = unit->getLimiter();
    ASSERT_NE(own, nullptr);
    EXPECT_FALSE(unit->hasExternalLimiter());
    EXPECT_EQ(own->getParent(), unit.get());

    int limiterChanges = 0;
    unit->signalLimiterChanged.connect([&limiterChanges] { ++limiterChanges; });
    EnumLimiter other;
    EXPECT_EQ(refusalText(*unit, &other), "EnumLimited unit - incorrect external limiter setter");
    EXPECT_EQ(refusalText(*unit, nullptr), "EnumLimited unit - incorrect external limiter setter");
    EXPECT_THROW(unit->setExternalLimiter(std::make_shared<EnumLimiter>()), std::runtime_error);
    EXPECT_EQ(unit->getLimiter(), own);
    EXPECT_EQ(limiterChanges, 0);
}

TEST(EnumLimitedUnitTest, ChangeOfTheLimiterInForceRenewsTheValueOut)
{
    auto unit = makeUnit(nullptr);
    SignalLog<TestDataPtr> log(*unit);
    unit->getLimiter()->addItem("a", LocalString("A"));
    EXPECT_EQ(log.take(), "out(null);");

    EnumLimiter first;
    EnumLimiter second;
    auto external = makeUnit(&first);
    SignalLog<TestDataPtr> externalLog(*external);
    first.addItem("x", LocalString("X"));
    EXPECT_EQ(externalLog.take(), "out(null);");

    int limiterChanges = 0;
    external->signalLimiterChanged.connect([&] {
        ++limiterChanges;
        EXPECT_EQ(external->getLimiter(), &second) << "the new limiter is in force when the signal fires";
    });
    external->setExternalLimiter(&second);
    EXPECT_EQ(limiterChanges, 1);
    EXPECT_EQ(externalLog.take(), "out(null);");

    first.addItem("y", LocalString("Y"));
    EXPECT_EQ(externalLog.take(), "") << "the former limiter is no longer followed";
    second.addItem("z", LocalString("Z"));
    EXPECT_EQ(externalLog.take(), "out(null);");

    external->setExternalLimiter(&second);
    EXPECT_EQ(limiterChanges, 1);
    EXPECT_EQ(externalLog.take(), "");
}

TEST(EnumLimitedUnitTest, HeldLimiterLivesWhileItIsInForce)
{
    auto held = std::make_shared<EnumLimiter>();
    const std::weak_ptr<EnumLimiter> watch = held;
    auto unit = std::make_unique<LimitedUnit>("Limited", LocalString::Empty(), LocalString::Empty(), held);
    held.reset();
    ASSERT_FALSE(watch.expired());
    EXPECT_TRUE(unit->hasExternalLimiter());
    EXPECT_EQ(unit->getLimiter(), watch.lock().get());

    // Set again as a plain pointer: still in force, so still kept.
    unit->setExternalLimiter(unit->getLimiter());
    EXPECT_FALSE(watch.expired());

    EnumLimiter other;
    unit->setExternalLimiter(&other);
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(unit->getLimiter(), &other);
}

TEST(EnumLimitedUnitTest, OwnLimiterIsFixedWithTheStructure)
{
    LockableGroup group("Group");
    auto* unit = group.add(makeUnit(nullptr));
    EnumLimiter* const own = unit->getLimiter();
    own->addItem("a", LocalString("A"));

    group.lockContainer();
    EXPECT_THROW(own->addItem("b", LocalString("B")), std::logic_error);
    EXPECT_EQ(own->count(), 1u);
}

TEST(EnumLimitedUnitTest, ExternalLimiterOutlivingItsUnitIsLeftClean)
{
    EnumLimiter shared;
    {
        auto unit = makeUnit(&shared);
        unit->signalValueOutChanged.connect([] {});
    }
    EXPECT_NO_THROW(shared.addItem("a", LocalString("A")));
    EXPECT_TRUE(shared.getSignalChanged().empty());
}

namespace {

using NumberUnit = ZemTree::Unit<double>;

// Three settings whose formulas read each other round: Tolerance = Step * 2, Step = RampStart / 100,
// RampStart = Tolerance * 10, and a fourth, Reader, that only reads Step.
struct CycleTree {
    std::unique_ptr<ZemTree::Node> root = std::make_unique<ZemTree::Node>("Test");
    ZemTree::Node* settings = root->add(std::make_unique<ZemTree::Node>("Settings"));
    std::vector<NumberUnit*> units;
    NumberUnit* reader = nullptr;
    int signals = 0;

    CycleTree(const std::vector<std::size_t>& formulaOrder, bool isWatched)
    {
        static const char* const ids[] = {"Tolerance", "Step", "RampStart"};
        static const char* const formulas[] = {"{../Step}*2", "{../RampStart}/100", "{../Tolerance}*10"};
        for (const char* id : ids)
            units.push_back(settings->add(
                std::make_unique<NumberUnit>(id, ZemTree::LocalString::Empty(), ZemTree::LocalString::Empty(), 1.0)));
        reader = settings->add(
            std::make_unique<NumberUnit>("Reader", ZemTree::LocalString::Empty(), ZemTree::LocalString::Empty(), 1.0));
        // A view listening computes each value out the moment it changes, in the order the edits come.
        if (isWatched)
            for (NumberUnit* unit : units)
                unit->signalValueOutChanged.connect([this] { ++signals; });
        reader->setFormula("{../Step}+1");
        reader->setIsFormulaSource(true);
        for (const std::size_t index : formulaOrder) {
            units[index]->setFormula(formulas[index]);
            units[index]->setIsFormulaSource(true);
        }
    }
};

std::string errorOf(const NumberUnit& unit)
{
    return unit.getError() == nullptr ? std::string() : unit.getError()->what();
}

} // namespace

// Whatever order the formulas are set in and the values are read in, with or without a listener, every unit on
// the cycle reports the cycle and none a number made from another's half-done value.
TEST(FormulaCycleTest, EveryUnitOnACycleOfThreeReportsTheCycle)
{
    std::vector<std::size_t> formulaOrder{0, 1, 2};
    do {
        for (const bool isWatched : {false, true}) {
            std::vector<std::size_t> readOrder{0, 1, 2};
            do {
                SCOPED_TRACE("formulas set " + std::to_string(formulaOrder[0]) + std::to_string(formulaOrder[1])
                             + std::to_string(formulaOrder[2]) + ", read " + std::to_string(readOrder[0])
                             + std::to_string(readOrder[1]) + std::to_string(readOrder[2])
                             + (isWatched ? ", watched" : ""));
                CycleTree tree(formulaOrder, isWatched);
                for (const std::size_t index : readOrder)
                    EXPECT_NE(std::string::npos, errorOf(*tree.units[index]).find("Circular reference"))
                        << tree.units[index]->getId() << " = " << tree.units[index]->getValue();
                // Off the cycle: an error handed on, not a number.
                EXPECT_FALSE(errorOf(*tree.reader).empty());
            } while (std::next_permutation(readOrder.begin(), readOrder.end()));
        }
    } while (std::next_permutation(formulaOrder.begin(), formulaOrder.end()));
}

TEST(FormulaCycleTest, BreakingTheCycleBringsTheNumbersBack)
{
    CycleTree tree({0, 1, 2}, true);
    ASSERT_FALSE(errorOf(*tree.units[0]).empty());
    tree.units[2]->setIsFormulaSource(false); // RampStart back to its data, 1.0
    for (NumberUnit* unit : tree.units)
        EXPECT_EQ("", errorOf(*unit)) << unit->getId();
    EXPECT_DOUBLE_EQ(0.02, tree.units[0]->getValue());
    EXPECT_DOUBLE_EQ(0.01, tree.units[1]->getValue());
    EXPECT_DOUBLE_EQ(1.01, tree.reader->getValue());
}
