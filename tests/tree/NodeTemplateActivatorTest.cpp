#include "core/tree/NodeTemplateActivator.h"

#include "TemporaryFolder.h"
#include "core/common/XmlInclude.h"
#include "core/tree/LocalString.h"
#include "core/tree/Node.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/NodeTemplateActivatorCollection.h"
#include "core/tree/SerializationMode.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using ZemTree::Node;
using ZemTree::NodeTemplateActivator;
using ZemTree::NodeTemplateActivatorCollection;
using ZemTree::SerializationMode;

class TemplateTestNode : public Node {
public:
    explicit TemplateTestNode(const std::string& id = "", const ZemTree::LocalString& description = "")
        : Node(id, description)
    {
    }
};

class OtherTemplateTestNode : public Node {
public:
    explicit OtherTemplateTestNode(const std::string& id = "") : Node(id) {}
};

[[maybe_unused]] const bool registered = ZemTree::NodeFactory::registerType<TemplateTestNode>()
                                         && ZemTree::NodeFactory::registerType<OtherTemplateTestNode>();

using TempFolder = ZemTreeTest::TemporaryFolder;

std::unique_ptr<Node> makeSample()
{
    auto root =
        std::make_unique<TemplateTestNode>("Distance", ZemTree::LocalString::create("Distance", "Дистанционная"));
    Node* const settings = root->add(std::make_unique<TemplateTestNode>("Settings"));
    settings->add(std::make_unique<TemplateTestNode>("Zset", ZemTree::LocalString::create("Z set", "Уставка Z")));
    settings->add(std::make_unique<OtherTemplateTestNode>("Tset"));
    root->add(std::make_unique<TemplateTestNode>("Results"));
    return root;
}

std::string toXml(const Node& node)
{
    xmlpp::Document document;
    SerializationMode mode;
    node.getXml(document.create_root_node("Root"), mode);
    return document.write_to_string();
}

TEST(NodeTemplateActivatorTest, SavedTemplateFillsAFreshNodeAndAChangedFileIsReadAgain)
{
    const TempFolder temp;
    const std::unique_ptr<Node> sample = makeSample();
    NodeTemplateActivator::saveTemplate(sample.get(), temp.file("Distance.xml"));
    NodeTemplateActivatorCollection collection;
    NodeTemplateActivator* const activator = collection.add("Distance", temp.file("Distance.xml"));
    std::vector<std::string> problems;
    SerializationMode mode;
    mode.problems = &problems;

    TemplateTestNode first;
    ASSERT_TRUE(activator->fill(&first, mode));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(toXml(*sample), toXml(first));
    EXPECT_NE(nullptr, dynamic_cast<const OtherTemplateTestNode*>(first.findChild("Settings")->findChild("Tset")));

    // Same size and a new time is a new template.
    sample->findChild("Settings")
        ->findChild("Zset")
        ->setDescription(ZemTree::LocalString::create("Z SET", "Уставка Z"));
    NodeTemplateActivator::saveTemplate(sample.get(), temp.file("Distance.xml"));
    fs::last_write_time(temp.file("Distance.xml"),
                        fs::last_write_time(temp.file("Distance.xml")) + std::chrono::seconds(5));
    TemplateTestNode second;
    ASSERT_TRUE(activator->fill(&second, mode));
    EXPECT_EQ(second.findChild("Settings")->findChild("Zset")->getDescription(), "Z SET");

    // A template that went away is no template any more.
    fs::remove(temp.file("Distance.xml"));
    TemplateTestNode third;
    EXPECT_FALSE(activator->fill(&third, mode));
}

TEST(NodeTemplateActivatorTest, BadFilesAreReportedAndLeaveTheNodeAlone)
{
    const TempFolder temp;
    temp.write("empty.xml", "");
    temp.write("broken.xml", "<Template><Node Id=\"a\">");
    temp.write("hollow.xml", "<Template><Other/></Template>");
    temp.write("entities.xml", "<?xml version=\"1.0\"?>\n"
                               "<!DOCTYPE Template [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;\">"
                               "<!ENTITY c \"&b;&b;&b;&b;&b;&b;\">]>\n"
                               "<Template><Node Id=\"x\"><Node Id=\"&c;\"/></Node></Template>");
    temp.write("external.xml", "<?xml version=\"1.0\"?>\n"
                               "<!DOCTYPE Template SYSTEM \"http://127.0.0.1:9/template.dtd\">\n"
                               "<Template><Node Id=\"x\"><Node Id=\"&ext;\"/></Node></Template>");
    fs::create_directory(temp.file("folder.xml"));

    struct Row {
        const char* text;
        std::string path;
    };
    const Row rows[] = {
        {"missing", temp.file("missing.xml")}, {"empty", temp.file("empty.xml")},
        {"unclosed", temp.file("broken.xml")}, {"template without node", temp.file("hollow.xml")},
        {"a folder", temp.file("folder.xml")}, {"undeclared external entity", temp.file("external.xml")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const NodeTemplateActivator activator(nullptr, "t", row.path);
        TemplateTestNode node("keep");
        std::vector<std::string> problems;
        SerializationMode mode;
        mode.problems = &problems;
        EXPECT_FALSE(activator.fill(&node, mode));
        EXPECT_EQ(1u, problems.size());
        EXPECT_EQ("keep", node.getId());
        EXPECT_TRUE(node.empty());
        EXPECT_EQ("", activator.getRootClassName());
    }

    // Entities are not expanded and nothing outside the file is read.
    temp.write("secret.txt", "SECRET");
    temp.write("local.xml", "<?xml version=\"1.0\"?>\n<!DOCTYPE Template [<!ENTITY ext SYSTEM \"file://"
                                + temp.file("secret.txt") + "\">]>\n<Template><Node Id=\"x\"><Node Id=\"a&ext;\"/>"
                                + "<Description Text=\"&ext;\"/></Node></Template>");
    for (const char* name : {"entities.xml", "local.xml"}) {
        SCOPED_TRACE(name);
        const NodeTemplateActivator activator(nullptr, "t", temp.file(name));
        TemplateTestNode node;
        std::vector<std::string> problems;
        SerializationMode mode;
        mode.problems = &problems;
        activator.fill(&node, mode);
        EXPECT_EQ(std::string::npos, node.getDescription().find("SECRET"));
        for (const Node* child : node) {
            EXPECT_LT(child->getId().size(), 100u);
            EXPECT_EQ(std::string::npos, child->getId().find("SECRET"));
        }
    }

    std::vector<std::string> problems;
    SerializationMode reporting;
    reporting.problems = &problems;
    EXPECT_FALSE(NodeTemplateActivator(nullptr, "t", temp.file("broken.xml")).fill(nullptr, reporting));
    EXPECT_EQ(1u, problems.size());
}

TEST(NodeTemplateActivatorTest, SaveRefusesNullAndUnwritablePaths)
{
    const TempFolder temp;
    EXPECT_THROW(NodeTemplateActivator::saveTemplate(nullptr, temp.file("x.xml")), std::logic_error);
    EXPECT_THROW(NodeTemplateActivator::saveTemplate(makeSample().get(), temp.file("no/such/folder/x.xml")),
                 std::runtime_error);
}

TEST(NodeTemplateActivatorCollectionTest, LoadsAFolderAndFindsByName)
{
    const TempFolder temp;
    const std::unique_ptr<Node> sample = makeSample();
    NodeTemplateActivator::saveTemplate(sample.get(), temp.file("Distance.xml"));
    NodeTemplateActivator::saveTemplate(sample.get(), temp.file("Overcurrent.xml"));
    temp.write("notes.txt", "not a template");
    fs::create_directory(temp.file("sub"));
    NodeTemplateActivator::saveTemplate(sample.get(), temp.file("sub/Nested.xml"));

    NodeTemplateActivatorCollection collection;
    EXPECT_EQ(0u, collection.loadFolder(temp.file("missing")));
    EXPECT_EQ(2u, collection.loadFolder(temp.file("")));
    EXPECT_EQ(0u, collection.loadFolder(temp.file("")));
    EXPECT_EQ(2u, collection.size());

    NodeTemplateActivator* const distance = collection.find("Distance");
    ASSERT_NE(nullptr, distance);
    EXPECT_EQ("Distance", distance->getName());
    EXPECT_EQ(temp.file("Distance.xml"), distance->getPath());
    EXPECT_EQ(distance, collection.find("templates/Distance.xml"));
    EXPECT_EQ(nullptr, collection.find("Nested"));

    EXPECT_THROW(collection.add("Distance", temp.file("other.xml")), std::logic_error);
}

TEST(NodeTemplateActivatorCollectionTest, AssociationChecksTheRootClass)
{
    const TempFolder temp;
    const std::unique_ptr<Node> sample = makeSample();
    NodeTemplateActivator::saveTemplate(sample.get(), temp.file("Distance.xml"));
    temp.write("Plain.xml", "<Template><Node Id=\"p\"/></Template>");
    NodeTemplateActivatorCollection collection;
    collection.loadFolder(temp.file(""));

    TemplateTestNode matching;
    OtherTemplateTestNode other;
    Node plain;
    NodeTemplateActivator* const distance = collection.find("Distance");
    NodeTemplateActivator* const classless = collection.find("Plain");
    ASSERT_NE(nullptr, distance);
    ASSERT_NE(nullptr, classless);

    EXPECT_EQ(distance, collection.getAssociatedSystemActivator(&matching, "Distance"));
    EXPECT_EQ(nullptr, collection.getAssociatedSystemActivator(&other, "Distance"));
    EXPECT_EQ(nullptr, collection.getAssociatedUserActivator(&plain, "Distance"));
    EXPECT_EQ(classless, collection.getAssociatedSystemActivator(&other, "Plain"));
}

} // namespace
