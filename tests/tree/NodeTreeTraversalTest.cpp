#include "core/tree/NodeTreeTraversal.h"

#include "core/tree/Node.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using ZemTree::Node;
using ZemTree::NodeTreeTraversal;

Node* addChild(Node* parent, const std::string& id)
{
    return parent->add(std::make_unique<Node>(id));
}

std::string walk(Node* root, bool skipRoot)
{
    std::string order;
    for (Node* node : NodeTreeTraversal(root, skipRoot))
        order += (order.empty() ? "" : " ") + node->getId();
    return order;
}

TEST(NodeTreeTraversalTest, PreOrderDepthFirst)
{
    // r ─ a ─ a1 ─ a11
    //   │   └ a2
    //   ├ b
    //   └ c ─ c1
    Node root("r");
    Node* const a = addChild(&root, "a");
    Node* const a1 = addChild(a, "a1");
    addChild(a1, "a11");
    addChild(a, "a2");
    addChild(&root, "b");
    Node* const c = addChild(&root, "c");
    addChild(c, "c1");

    struct Row {
        const char* text;
        Node* root;
        bool skipRoot;
        std::string order;
    };
    const Row rows[] = {
        {"whole tree with root", &root, false, "r a a1 a11 a2 b c c1"},
        {"whole tree without root", &root, true, "a a1 a11 a2 b c c1"},
        {"subtree stops at its own end", a, false, "a a1 a11 a2"},
        {"last subtree", c, false, "c c1"},
        {"leaf without root", c->at(0), true, ""},
        {"null root, skipped", nullptr, true, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.order, walk(row.root, row.skipRoot));
    }
}

TEST(NodeTreeTraversalTest, IteratorsCompareAndAdvance)
{
    Node root("r");
    addChild(&root, "a");
    const NodeTreeTraversal traversal(&root);
    auto it = traversal.begin();
    EXPECT_TRUE(it != traversal.end());
    EXPECT_EQ(&root, *it++);
    EXPECT_EQ("a", (*it)->getId());
    ++it;
    EXPECT_FALSE(it != traversal.end());
    ++it; // advancing the end stays at the end
    EXPECT_FALSE(it != traversal.end());
}

} // namespace
