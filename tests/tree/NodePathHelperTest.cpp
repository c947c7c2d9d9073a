#include "core/tree/NodePathHelper.h"

#include "core/common/XmlInclude.h"
#include "core/tree/Node.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/NodeTreeTraversal.h"
#include "core/tree/SerializationMode.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZemTree::Node;
using ZemTree::NodePathHelper;

// A registered node type, so that saved children carry their class and a reader rebuilds them.
class PathTestNode : public Node {
public:
    explicit PathTestNode(const std::string& id = "") : Node(id) {}
};

[[maybe_unused]] const bool registered = ZemTree::NodeFactory::registerType<PathTestNode>();

Node* addChild(Node* parent, const std::string& id)
{
    return parent->add(std::make_unique<PathTestNode>(id));
}

// Root
// ├── Settings
// │   ├── Iset
// │   └── Tset
// ├── Parameters
// │   └── Group
// │       └── Value
// ├── a/b          (an id with a slash)
// │   └── ..       (an id that looks like a step)
// ├── 100%
// └── ""           (an empty id)
struct Tree {
    Tree() : root(std::make_unique<PathTestNode>("Root"))
    {
        settings = addChild(root.get(), "Settings");
        iset = addChild(settings, "Iset");
        tset = addChild(settings, "Tset");
        parameters = addChild(root.get(), "Parameters");
        group = addChild(parameters, "Group");
        value = addChild(group, "Value");
        slash = addChild(root.get(), "a/b");
        dots = addChild(slash, "..");
        percent = addChild(root.get(), "100%");
        unnamed = addChild(root.get(), "");
    }

    std::unique_ptr<Node> root;
    Node* settings;
    Node* iset;
    Node* tset;
    Node* parameters;
    Node* group;
    Node* value;
    Node* slash;
    Node* dots;
    Node* percent;
    Node* unnamed;
};

TEST(NodePathHelperTest, PathsAndTargets)
{
    const Tree tree;
    struct Row {
        const char* text;
        const Node* from;
        const Node* to;
        std::string path;
    };
    const Row rows[] = {
        {"self", tree.iset, tree.iset, "."},
        {"sibling", tree.iset, tree.tset, "../Tset"},
        {"cousin", tree.iset, tree.group, "../../Parameters/Group"},
        {"cousin deeper", tree.value, tree.tset, "../../../Settings/Tset"},
        {"parent", tree.iset, tree.settings, ".."},
        {"ancestor", tree.value, tree.root.get(), "../../.."},
        {"child", tree.settings, tree.iset, "Iset"},
        {"descendant", tree.root.get(), tree.value, "Parameters/Group/Value"},
        {"id with slash and dot-like id", tree.iset, tree.dots, "../../a%2Fb/%2E."},
        {"id with percent", tree.root.get(), tree.percent, "100%25"},
        {"empty id", tree.value, tree.unnamed, "../../../%"},
        {"from an empty id", tree.unnamed, tree.iset, "../Settings/Iset"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.path, NodePathHelper::getPath(row.from, row.to));
        EXPECT_EQ(row.to, NodePathHelper::getTarget(const_cast<Node*>(row.from), row.path));
    }
}

TEST(NodePathHelperTest, NoPathBetweenTreesOrFromNull)
{
    const Tree first;
    const Tree second;
    EXPECT_EQ("", NodePathHelper::getPath(first.iset, second.iset));
    EXPECT_EQ("", NodePathHelper::getPath(first.root.get(), second.root.get()));
    EXPECT_EQ("", NodePathHelper::getPath(nullptr, first.iset));
    EXPECT_EQ("", NodePathHelper::getPath(first.iset, nullptr));
    EXPECT_EQ(nullptr, NodePathHelper::getTarget(nullptr, "Iset"));
}

TEST(NodePathHelperTest, MalformedOrMissingPathsGiveNull)
{
    const Tree tree;
    // ".." from the root and the long climb both go above the root.
    const char* const paths[] = {
        "",
        "/",
        "Settings/",
        "/Settings",
        "Settings//Iset",
        "..",
        "Nobody",
        "Settings/X",
        "Settings/Iset/x",
        "%2",
        "%zz",
        "100%",
        "a/b",
        "a%2Fb/..%",
        "%%",
        "Settings/Iset/../../../..",
    };
    for (const char* path : paths) {
        SCOPED_TRACE(path);
        EXPECT_EQ(nullptr, NodePathHelper::getTarget(tree.root.get(), path));
    }
}

TEST(NodePathHelperTest, LenientStepsResolve)
{
    const Tree tree;
    EXPECT_EQ(tree.iset, NodePathHelper::getTarget(tree.root.get(), "./Settings/./Iset"));
    EXPECT_EQ(tree.tset, NodePathHelper::getTarget(tree.root.get(), "Settings/Iset/../Tset"));
    EXPECT_EQ(tree.root.get(), NodePathHelper::getTarget(tree.root.get(), "."));
}

TEST(NodePathHelperTest, AmbiguousSiblingHasNoPath)
{
    const Tree tree;
    Node* const twin = addChild(tree.settings, "Iset");
    EXPECT_EQ("", NodePathHelper::getPath(tree.root.get(), twin));
    EXPECT_EQ("Settings/Iset", NodePathHelper::getPath(tree.root.get(), tree.iset));
}

TEST(NodePathHelperTest, EscapeRoundTrip)
{
    for (const std::string id : {"", ".", "..", "...", "%", "%2F", "/", "a/b/c", "Уставка 1", ". .", "%%25"}) {
        SCOPED_TRACE(id);
        const std::string step = NodePathHelper::escapeId(id);
        EXPECT_EQ(std::string::npos, step.find('/'));
        EXPECT_NE(".", step);
        EXPECT_NE("..", step);
        std::string back;
        ASSERT_TRUE(NodePathHelper::unescapeId(step, back));
        EXPECT_EQ(id, back);
    }
}

TEST(NodePathHelperTest, PathsSurviveSaveAndLoad)
{
    const Tree tree;
    std::vector<std::pair<Node*, Node*>> pairs;
    std::vector<std::string> paths;
    for (Node* from : ZemTree::NodeTreeTraversal(tree.root.get())) {
        for (Node* to : ZemTree::NodeTreeTraversal(tree.root.get())) {
            pairs.emplace_back(from, to);
            paths.push_back(NodePathHelper::getPath(from, to));
        }
    }

    xmlpp::Document document;
    ZemTree::SerializationMode mode;
    mode.kind = ZemTree::SerializationMode::System;
    std::vector<std::string> problems;
    mode.problems = &problems;
    xmlpp::Element* const element = tree.root->getXml(document.create_root_node("Root"), mode);
    PathTestNode loaded;
    loaded.setXml(element, mode);
    EXPECT_TRUE(problems.empty());

    // The loaded tree has the same shape, so the n-th node in order corresponds to the n-th original node.
    std::vector<Node*> original;
    for (Node* node : ZemTree::NodeTreeTraversal(tree.root.get()))
        original.push_back(node);
    std::vector<Node*> copy;
    for (Node* node : ZemTree::NodeTreeTraversal(&loaded))
        copy.push_back(node);
    ASSERT_EQ(original.size(), copy.size());

    for (std::size_t i = 0; i < original.size(); ++i) {
        for (std::size_t j = 0; j < original.size(); ++j) {
            const std::string& path = paths[i * original.size() + j];
            SCOPED_TRACE(original[i]->getHierarchicalId() + " -> " + path);
            EXPECT_EQ(path, NodePathHelper::getPath(copy[i], copy[j]));
            EXPECT_EQ(copy[j], NodePathHelper::getTarget(copy[i], path));
        }
    }
}

} // namespace
