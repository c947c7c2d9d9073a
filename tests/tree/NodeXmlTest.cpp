#include "TreeTestNodes.h"
#include "core/common/XmlInclude.h"
#include "core/tree/ActionUnit.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/Node.h"
#include "core/tree/SeparateUnit.h"
#include "core/tree/StringUnit.h"
#include "core/tree/TreeLocalization.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using namespace ZemTree;
using TreeTest::loadFromString;
using TreeTest::makeMode;
using TreeTest::saveToString;
using TreeTest::TestGroup;
using TreeTest::TestItem;

namespace {

// Root
//   Serial   StringUnit, two-language description, second text
//   Before   ActionUnit, inactive, with an action
//   Inner    TestGroup
//     Weighted  TestItem, hidden, 42
//     Split     SeparateUnit
//     Light     TestItem, 7
void fillSampleTree(TestGroup& root)
{
    root.add(std::make_unique<StringUnit>("Serial", LocalString::create("Serial number", "Серийный номер"),
                                          LocalString("as printed"), "A-17 \"x\" <y>"));
    auto* action = root.add(std::make_unique<ActionUnit>("Before", LocalString("Action before")));
    action->setAction("reset all");
    action->setIsActive(false);
    auto* inner = root.add(std::make_unique<TestGroup>("Inner", LocalString("Inner group")));
    auto* first = inner->add(std::make_unique<TestItem>("Weighted"));
    first->weight = 42;
    first->setIsHidden(true);
    inner->add(std::make_unique<SeparateUnit>("Split", LocalString("Group"), LocalString("Group")));
    inner->add(std::make_unique<TestItem>("Light"))->weight = 7;
}

} // namespace

TEST(NodeXmlTest, SaveLoadSaveGivesTheSameXml)
{
    for (std::uint8_t kind : {SerializationMode::System, SerializationMode::User}) {
        SCOPED_TRACE(static_cast<int>(kind));
        std::vector<std::string> problems;
        const SerializationMode mode = makeMode(kind, &problems);

        TestGroup original("Root", LocalString::create("Relay", "Реле"));
        fillSampleTree(original);
        const std::string saved = saveToString(original, mode);

        TestGroup loaded("Other");
        loadFromString(loaded, saved, mode);
        EXPECT_TRUE(problems.empty()) << (problems.empty() ? "" : problems.front());
        EXPECT_EQ(saveToString(loaded, mode), saved);

        // The loaded tree is the same tree, not only the same text.
        ASSERT_EQ(loaded.size(), 3u);
        auto* serial = dynamic_cast<StringUnit*>(loaded.at(0));
        ASSERT_NE(serial, nullptr);
        EXPECT_EQ(serial->getValue(), "A-17 \"x\" <y>");
        EXPECT_EQ(serial->getLocalDescription().getValue("ru"), "Серийный номер");
        auto* action = dynamic_cast<ActionUnit*>(loaded.at(1));
        ASSERT_NE(action, nullptr);
        EXPECT_FALSE(action->isActive());
        auto* first = dynamic_cast<TestItem*>(loaded.at(2)->at(0));
        ASSERT_NE(first, nullptr);
        EXPECT_EQ(first->weight, 42);
        EXPECT_TRUE(first->isHidden());
    }
}

TEST(NodeXmlTest, ExistingChildrenAreReadInPlace)
{
    std::vector<std::string> problems;
    const SerializationMode mode = makeMode(SerializationMode::User, &problems);
    TestGroup original("Root");
    fillSampleTree(original);
    const std::string saved = saveToString(original, mode);

    TestGroup target("Root");
    auto* inner = target.add(std::make_unique<TestGroup>("Inner"));
    TestItem* prepared = inner->add(std::make_unique<TestItem>("Weighted"));
    loadFromString(target, saved, mode);

    EXPECT_TRUE(problems.empty());
    ASSERT_EQ(target.size(), 3u) << "Serial and Before are made, Inner is kept";
    EXPECT_EQ(target.at(0), inner) << "the existing child keeps its place; new ones are appended";
    ASSERT_EQ(inner->size(), 3u);
    EXPECT_EQ(inner->at(0), prepared);
    EXPECT_EQ(prepared->weight, 42);
    EXPECT_EQ(static_cast<TestItem*>(inner->at(2))->weight, 7) << "a key the target lacks makes a new node";
}

TEST(NodeXmlTest, FixedStructureIsReadInPlaceWithItsOwnDescriptions)
{
    const SerializationMode mode = makeMode(SerializationMode::System, nullptr);
    TestGroup original("Root");
    auto* fixed = original.add(std::make_unique<TestItem>("Fixed"));
    fixed->setDescription(LocalString("Text from code"));
    fixed->weight = 5;
    original.lockContainer();
    const std::string saved = saveToString(original, mode);
    EXPECT_EQ(saved.find("Text from code"), std::string::npos) << "fixed descriptors are not saved";
    EXPECT_EQ(saved.find("TreeTest::TestItem"), std::string::npos) << "a fixed child needs no class";

    TestGroup target("Root");
    auto* targetFixed = target.add(std::make_unique<TestItem>("Fixed"));
    targetFixed->setDescription(LocalString("Other language"));
    target.lockContainer();
    loadFromString(target, saved, mode);
    EXPECT_EQ(targetFixed->weight, 5);
    EXPECT_EQ(targetFixed->getDescription(), "Other language");

    std::vector<std::string> problems;
    TestGroup bare("Root");
    loadFromString(bare, saved, makeMode(SerializationMode::System, &problems));
    EXPECT_EQ(bare.size(), 0u);
    ASSERT_EQ(problems.size(), 1u) << "a fixed child that the target lacks cannot be made";
    EXPECT_NE(problems[0].find("Fixed"), std::string::npos);
}

TEST(NodeXmlTest, BadChildrenAreReportedAndReadingGoesOn)
{
    const std::string text = R"(<?xml version="1.0"?>
<Root><Node Id="Root" Class="TreeTest::TestGroup">
  <Node Class="TreeTest::TestItem" Weight="1"/>
  <Node Id="Ghost" Class="Nope::Unknown"/>
  <Node Id="Nameless"/>
  <Node Id="Bad" Class="TreeTest::TestForbidden"/>
  <Node Id="Heavy" Class="TreeTest::TestItem" Weight="lots"/>
  <Node Id="Odd" Class="TreeTest::TestItem" IsActive="maybe" IsHidden="true" Weight="3"/>
  <Node Id="Text" Class="ZemTree::StringUnit" Value="kept"><Description><Value Text="no language"/></Description></Node>
  <Garbage Id="NotANode"/>
  text between <!-- and a comment -->
  <Node Id="Last" Class="TreeTest::TestItem" Weight="5"/>
</Node></Root>)";
    std::vector<std::string> problems;
    TestGroup root("Root");
    ASSERT_NO_THROW(loadFromString(root, text, makeMode(SerializationMode::User, &problems)));

    const char* expectedInProblems[] = {"'text between'", "no Id", "Nope::Unknown", "Nameless", "Bad",
                                        "Heavy",          "maybe", "Text"};
    ASSERT_EQ(problems.size(), std::size(expectedInProblems));
    for (std::size_t i = 0; i < problems.size(); ++i) {
        SCOPED_TRACE(problems[i]);
        EXPECT_NE(problems[i].find(expectedInProblems[i]), std::string::npos) << expectedInProblems[i];
    }

    ASSERT_EQ(root.size(), 4u);
    const char* ids[] = {"Heavy", "Odd", "Text", "Last"};
    for (std::size_t i = 0; i < root.size(); ++i)
        EXPECT_EQ(root.at(i)->getId(), ids[i]);
    auto* odd = static_cast<TestItem*>(root.at(1));
    EXPECT_TRUE(odd->isActive()) << "an unknown word leaves the field";
    EXPECT_TRUE(odd->isHidden()) << "the rest of the element is still read";
    EXPECT_EQ(static_cast<StringUnit*>(root.at(2))->getValue(), "kept");
}

TEST(NodeXmlTest, HostileShapesDoNotBreakTheReader)
{
    std::vector<std::string> problems;
    const SerializationMode mode = makeMode(SerializationMode::User, &problems);

    TestGroup root("Root");
    EXPECT_NO_THROW(root.setXml(nullptr, mode));
    EXPECT_EQ(problems.size(), 1u);
    EXPECT_EQ(root.getXml(nullptr, mode), nullptr);

    // Deep nesting, as deep as the parser lets a document be, is read level by level.
    const int depth = 200;
    std::string text = "<Root>";
    for (int i = 0; i < depth; ++i)
        text += "<Node Id=\"L" + std::to_string(i) + "\" Class=\"TreeTest::TestGroup\">";
    for (int i = 0; i < depth; ++i)
        text += "</Node>";
    text += "</Root>";
    problems.clear();
    TestGroup deep("L0");
    loadFromString(deep, text, mode);
    EXPECT_TRUE(problems.empty());
    const Node* node = &deep;
    int levels = 1;
    while (node->size() == 1) {
        node = node->at(0);
        ++levels;
    }
    EXPECT_EQ(levels, depth);
    EXPECT_EQ(node->getId(), "L199");
}

TEST(NodeXmlTest, ReportFrame)
{
    class Silent : public Node {
    public:
        using Node::Node;

    protected:
        xmlpp::Element* _getDisplayXmlCurrent(DisplayXmlParameters&, xmlpp::Element*) const override { return nullptr; }
    };

    Node root("Root", LocalString("Relay"));
    root.add(std::make_unique<StringUnit>("Serial", LocalString("Serial number"), LocalString(), "A-17"));
    root.add(std::make_unique<TestItem>("Hidden"))->setIsHidden(true);
    root.at(1)->add(std::make_unique<Node>("BelowHidden"));
    auto* silent = root.add(std::make_unique<Silent>("Silent"));
    silent->add(std::make_unique<Node>("BelowSilent", LocalString("Lifted")));
    root.add(std::make_unique<ActionUnit>("Off"))->setIsActive(false);

    xmlpp::Document document;
    xmlpp::Element* report = document.create_root_node("Report");
    DisplayXmlParameters parameters("/nonexistent/report");
    root.getDisplayXml(parameters, report);

    struct Row {
        const char* xpath;
        std::size_t count;
    };
    const Row rows[] = {
        {"/Report/Node/Node[@Id='Serial'][@DataType='String'][@Value='A-17'][@Description='Serial number']", 1},
        {"//Node[@Id='Hidden' or @Id='BelowHidden']", 0},
        {"//Node[@Id='Silent']", 0},
        {"/Report/Node/Node[@Id='BelowSilent'][@Description='Lifted']", 1},
        {"/Report/Node/Node[@Id='Off'][@IsActive='false']", 1},
        {"//Node", 4},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xpath);
        EXPECT_EQ(report->find(row.xpath).size(), row.count);
    }
}

// Elements that could not be read come back in saves of the kind they were read with, once, however often the
// tree reads its file again.
TEST(NodeXmlTest, UnreadableChildrenAreKeptForTheirOwnKind)
{
    const std::string text = R"(<Root><Node Id="Root" Class="TreeTest::TestGroup">)"
                             R"(<Node Id="A" Class="TreeTest::TestItem" Weight="1"/>)"
                             R"(<Node Id="Ghost" Class="Nope::Unknown"><Inner x="1">t</Inner></Node>)"
                             R"(<Node Id="B" Class="TreeTest::TestItem" Weight="2"/>)"
                             R"(<Node Class="TreeTest::TestItem"/>)"
                             R"(</Node></Root>)";
    const std::string ghost = R"(<Node Id="Ghost" Class="Nope::Unknown"><Inner x="1">t</Inner></Node>)";
    const std::string keyless = R"(<Node Class="TreeTest::TestItem"/>)";
    for (std::uint8_t kind : {SerializationMode::System, SerializationMode::User}) {
        SCOPED_TRACE(static_cast<int>(kind));
        const std::uint8_t other =
            kind == SerializationMode::User ? SerializationMode::System : SerializationMode::User;
        TestGroup root("Root");
        for (int round = 0; round < 2; ++round) {
            std::vector<std::string> problems;
            loadFromString(root, text, makeMode(kind, &problems));
            EXPECT_EQ((std::vector<std::string>{
                          "Root/Ghost: the class 'Nope::Unknown' is unknown; it is kept unread and saved as it was",
                          "Root: a child element has no Id; it is kept unread and saved as it was"}),
                      problems);
        }
        const std::string saved = saveToString(root, makeMode(kind));
        const std::size_t at = saved.find(ghost);
        ASSERT_NE(std::string::npos, at) << saved;
        EXPECT_EQ(std::string::npos, saved.find(ghost, at + 1));
        EXPECT_LT(saved.find("<Node Id=\"A\""), at);
        EXPECT_LT(at, saved.find("<Node Id=\"B\""));
        EXPECT_LT(saved.find("<Node Id=\"B\""), saved.find(keyless));

        const std::string otherSave = saveToString(root, makeMode(other));
        EXPECT_EQ(std::string::npos, otherSave.find("Ghost"));
        EXPECT_EQ(std::string::npos, otherSave.find(keyless));

        // When the sibling it followed is gone, the element still comes back, at the end.
        root.remove(root.findChild("A"));
        const std::string withoutA = saveToString(root, makeMode(kind));
        EXPECT_NE(std::string::npos, withoutA.find(ghost));
    }
}
