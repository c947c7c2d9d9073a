#include "core/formula/TreeWatcher.h"

#include "FormulaTestNodes.h"
#include "core/tree/Node.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {

using ZemTree::Node;
using ZemTree::TreeWatcher;

struct Counts {
    int tree = 0;
    int value = 0;
    std::vector<const Node*> destroyed;
};

TreeWatcher::Handlers countInto(Counts& counts)
{
    return TreeWatcher::Handlers{[&counts] { ++counts.tree; }, [&counts] { ++counts.value; },
                                 [&counts](const Node* node) { counts.destroyed.push_back(node); }};
}

TEST(TreeWatcherTest, ASilentlyDestroyedNodeIsForgottenAndReported)
{
    auto root = std::make_unique<Node>("Root");
    Node* child = root->add(std::make_unique<Node>("Child"));
    Counts counts;
    TreeWatcher watcher(countInto(counts));
    watcher.watch({{child, TreeWatcher::PositionChanged}, {root.get(), TreeWatcher::CollectionChanged}});
    ASSERT_TRUE(watcher.isWatching(child));

    const Node* const rootAddress = root.get();
    root.reset();
    // The child goes first, from its parent's destructor; then the handler is told once per node.
    ASSERT_EQ(counts.destroyed.size(), 2u);
    EXPECT_EQ(counts.destroyed[0], child);
    EXPECT_EQ(counts.destroyed[1], rootAddress);
    EXPECT_FALSE(watcher.isWatching(child));
    EXPECT_EQ(counts.tree, 0);
}

TEST(TreeWatcherTest, AHandlerMayRewatchWhileItsSignalIsEmitted)
{
    Node root("Root");
    Node* child = root.add(std::make_unique<Node>("Child"));
    int calls = 0;
    std::unique_ptr<TreeWatcher> watcher;
    bool widen = false;
    watcher = std::make_unique<TreeWatcher>(TreeWatcher::Handlers{
        [&] {
            ++calls;
            std::vector<std::pair<Node*, unsigned>> nodes{{&root, TreeWatcher::CollectionChanged}};
            if (widen)
                nodes.emplace_back(child, TreeWatcher::CollectionChanged);
            watcher->watch(nodes);
        },
        nullptr, nullptr});
    watcher->watch({{&root, TreeWatcher::CollectionChanged}});
    root.add(std::make_unique<Node>("A"));
    root.add(std::make_unique<Node>("B"));
    EXPECT_EQ(calls, 2);

    // A changed set renews connections during the emission; the new ones wait for the next change.
    widen = true;
    root.add(std::make_unique<Node>("C"));
    EXPECT_EQ(calls, 3);
    EXPECT_TRUE(watcher->isWatching(child));
    child->add(std::make_unique<Node>("D"));
    EXPECT_EQ(calls, 4);
}

} // namespace
