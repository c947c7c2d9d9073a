#include "core/tree/NodePathHelper.h"

#include "core/tree/Node.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using ZemTree::Node;
using ZemTree::NodePathHelper;

Node* addChild(Node* parent, const std::string& id)
{
    return parent->add(std::make_unique<Node>(id));
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
    Tree() : root(std::make_unique<Node>("Root"))
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
        {"cousin deeper", tree.value, tree.tset, "../../../Settings/Tset"},
        {"ancestor", tree.value, tree.root.get(), "../../.."},
        {"descendant", tree.root.get(), tree.value, "Parameters/Group/Value"},
        {"id with slash and dot-like id", tree.iset, tree.dots, "../../a%2Fb/%2E."},
        {"id with percent", tree.root.get(), tree.percent, "100%25"},
        {"empty id", tree.value, tree.unnamed, "../../../%"},
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
    EXPECT_EQ("", NodePathHelper::getPath(nullptr, first.iset));
    EXPECT_EQ("", NodePathHelper::getPath(first.iset, nullptr));
    EXPECT_EQ(nullptr, NodePathHelper::getTarget(nullptr, "Iset"));
}

TEST(NodePathHelperTest, MalformedOrMissingPathsGiveNull)
{
    const Tree tree;
    // ".." from the root and the long climb both go above the root.
    const char* const paths[] = {"",   "/",   "Settings/", "Settings//Iset", "..",  "Nobody",
                                 "%2", "%zz", "100%",      "a/b",            "%%",  "Settings/Iset/../../../.."};
    for (const char* path : paths) {
        SCOPED_TRACE(path);
        EXPECT_EQ(nullptr, NodePathHelper::getTarget(tree.root.get(), path));
    }
}

TEST(NodePathHelperTest, LenientStepsResolve)
{
    const Tree tree;
    Node* const twin = addChild(tree.settings, "Iset");
    EXPECT_EQ("", NodePathHelper::getPath(tree.root.get(), twin)) << "an ambiguous sibling has no path";
    EXPECT_EQ(tree.iset, NodePathHelper::getTarget(tree.root.get(), "./Settings/./Iset"));
    EXPECT_EQ(tree.tset, NodePathHelper::getTarget(tree.root.get(), "Settings/Iset/../Tset"));
}

TEST(NodePathHelperTest, EscapeRoundTrip)
{
    for (const std::string id : {"", ".", "..", "...", "%2F", "a/b/c", "Уставка 1", "%%25"}) {
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

} // namespace
