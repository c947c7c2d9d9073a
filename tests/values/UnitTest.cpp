#include "values/Unit.h"

#include "ValueTestSupport.h"
#include "XmlTestSupport.h"
#include "core/common/XmlInclude.h"
#include "core/formula/EmbeddedFormula.h"
#include "core/tree/ExtendedTypeInfo.h"
#include "core/tree/Node.h"
#include "core/tree/SerializationMode.h"
#include "core/tree/ValueErrors.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ValueTest;
using ZemTreeTest::loadFromString;
using ZemTreeTest::makeMode;
using ZemTreeTest::saveToString;
using ZemTree::EmbeddedFormula;
using ZemTree::ExtendedTypeInfo;
using ZemTree::Node;
using ZemTree::SerializationMode;

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
