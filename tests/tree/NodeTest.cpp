#include "core/tree/Node.h"

#include "TreeTestNodes.h"
#include "core/tree/TreeLocalization.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ZemTree;
using TreeTest::TestForbidden;
using TreeTest::TestGroup;
using TreeTest::TestItem;

namespace {

struct PositionRecord {
    Node* source;
    Node* item;
    Zem::NotifyCollectionChangedAction action;
    std::uint64_t index;
};

void recordPositions(Node* node, std::vector<PositionRecord>& records)
{
    node->getSignalHierarchicalPositionChanged().connect([&records](Node* source, Node::Args& args) {
        records.push_back({source, args.item, args.action, args.index});
    });
}

} // namespace

TEST(NodeTest, ParentLinksFollowAddingAndRemoving)
{
    Node root("Root");
    Node* a = root.add(std::make_unique<Node>("A"));
    Node* b = a->add(std::make_unique<Node>("B"));
    TestItem* item = b->add(std::make_unique<TestItem>("Item"));

    Node* inserted = root.insert(0, std::make_unique<Node>("Inserted"));
    EXPECT_EQ(inserted->getIndex(), 0);
    EXPECT_EQ(a->getIndex(), 1);
    EXPECT_EQ(item->getParent(), b);
    EXPECT_EQ(item->getRoot(), &root);
    EXPECT_EQ(item->parentChangedCount, 1);

    std::unique_ptr<Node> released = b->release(item);
    ASSERT_EQ(released.get(), item);
    EXPECT_EQ(item->getParent(), nullptr);
    EXPECT_EQ(item->getRoot(), item);
    EXPECT_EQ(item->getIndex(), -1);
    EXPECT_EQ(item->parentChangedCount, 2);
}

TEST(NodeTest, HierarchicalIdAndDescription)
{
    Node root("Root", LocalString("Protection"));
    Node* group = root.add(std::make_unique<Node>("Group", LocalString()));
    Node* leaf = group->add(std::make_unique<Node>("Leaf", LocalString::create("Voltage", "Напряжение")));
    Node* unnamed = root.add(std::make_unique<Node>("", LocalString("Only text")));

    struct Row {
        const char* text;
        const Node* node;
        int language;
        std::string id;
        std::string description;
    };
    const Row rows[] = {
        {"empty description is skipped", group, 0, "Root/Group", "Protection"},
        {"russian leaf", leaf, 1, "Root/Group/Leaf", "Protection / Напряжение"},
        {"empty id keeps its place", unnamed, 0, "Root/", "Protection / Only text"},
    };
    const int languageBefore = lng::language;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        lng::language = row.language;
        EXPECT_EQ(row.node->getHierarchicalId(), row.id);
        EXPECT_EQ(row.node->getHierarchicalDescription(), row.description);
    }
    lng::language = languageBefore;
}

TEST(NodeTest, RefusedChildrenLeaveTreeAndSignalsUntouched)
{
    TestGroup group;
    Node* child = group.add(std::make_unique<Node>("Existing"));
    Node other("Other");
    int collectionSignals = 0;
    group.getSignalCollectionChanged().connect([&](Node::Args&) { ++collectionSignals; });
    std::vector<PositionRecord> positions;
    recordPositions(&group, positions);

    EXPECT_THROW(group.add(std::make_unique<TestForbidden>()), std::logic_error);
    // The raw form of the collection is the only way to offer a node that is already in a tree.
    EXPECT_THROW(child->Zem::NotifyCollection<Node*>::add(child), std::logic_error);
    EXPECT_THROW(child->Zem::NotifyCollection<Node*>::add(&group), std::logic_error) << "its ancestor";
    EXPECT_THROW(other.Zem::NotifyCollection<Node*>::add(child), std::logic_error) << "a node with a parent";
    EXPECT_EQ(group.size(), 1u);
    EXPECT_EQ(other.size(), 0u);
    EXPECT_EQ(child->getParent(), &group);
    EXPECT_EQ(collectionSignals, 0);
    EXPECT_TRUE(positions.empty());
}

TEST(NodeTest, LockedContainerRefusesTheUserButTakesProperties)
{
    TestGroup group;
    TestItem* existing = group.add(std::make_unique<TestItem>("Existing"));
    group.lockContainer();

    try {
        group.add(std::make_unique<Node>("New"));
        FAIL() << "a locked container must refuse";
    }
    catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), lng::Tree::get("error.ReadOnly"));
    }
    EXPECT_THROW(group.remove(existing), std::logic_error);
    EXPECT_EQ(group.size(), 1u);

    int collectionSignals = 0;
    group.getSignalCollectionChanged().connect([&](Node::Args&) { ++collectionSignals; });
    auto* property = static_cast<TestItem*>(group.addPropertyInner(std::make_unique<TestItem>("Property")));
    EXPECT_EQ(group.size(), 2u);
    EXPECT_EQ(collectionSignals, 1);
    EXPECT_TRUE(group.isLocked()) << "the lock is restored after the property is in";
    EXPECT_TRUE(property->isReadOnlyDescriptors());

    // A refused property leaves the lock in place too.
    EXPECT_THROW(group.addPropertyInner(std::make_unique<TestForbidden>()), std::logic_error);
    EXPECT_TRUE(group.isLocked());
    EXPECT_EQ(group.size(), 2u);
}

TEST(NodeTest, ChildrenAreToldAboutTheParentLock)
{
    TestGroup group;
    TestItem* item = group.add(std::make_unique<TestItem>("Item"));
    group.lockContainer();
    EXPECT_TRUE(item->isReadOnlyDescriptors());
    group.unlockContainer();
    EXPECT_FALSE(item->isParentCollectionLocked());
    EXPECT_EQ(item->parentLockedCalls, (std::vector<bool>{false, true, false}));
}

TEST(NodeTest, SystemLockReachesTheSubtreeAndChildLockPassesOn)
{
    TestGroup root("Root");
    TestGroup* inner = root.add(std::make_unique<TestGroup>("Inner"));
    TestItem* item = inner->add(std::make_unique<TestItem>("Item"));

    root.lockContainer();
    EXPECT_TRUE(root.isLocked());
    EXPECT_FALSE(inner->isLocked()) << "the system lock tells the subtree but locks only this container";
    EXPECT_EQ(root.systemLockedCount, 1);
    EXPECT_EQ(inner->systemLockedCount, 1);
    EXPECT_EQ(item->systemLockedCount, 1);

    root.lockChildContainer(inner);
    EXPECT_TRUE(inner->isLocked());
    EXPECT_EQ(inner->systemLockedCount, 2);
    EXPECT_EQ(item->systemLockedCount, 2);
    EXPECT_THROW(inner->add(std::make_unique<Node>("New")), std::logic_error);
    EXPECT_NO_THROW(root.lockChildContainer(nullptr));
}

TEST(NodeTest, HierarchicalPositionSignalReachesTheMovedSubtree)
{
    Node root("Root");
    Node* sibling = root.add(std::make_unique<Node>("Sibling"));
    auto moved = std::make_unique<Node>("Moved");
    Node* child = moved->add(std::make_unique<Node>("Child"));
    Node* grandChild = child->add(std::make_unique<Node>("GrandChild"));
    Node* movedRaw = moved.get();

    std::vector<PositionRecord> records;
    for (Node* node : {&root, sibling, movedRaw, child, grandChild})
        recordPositions(node, records);

    root.add(std::move(moved));
    ASSERT_EQ(records.size(), 3u) << "the moved node and its descendants only";
    const Node* expectedSources[] = {movedRaw, child, grandChild};
    for (std::size_t i = 0; i < records.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(records[i].source, expectedSources[i]);
        EXPECT_EQ(records[i].item, movedRaw);
        EXPECT_EQ(records[i].action, Zem::NotifyCollectionChangedAction::Added);
        EXPECT_EQ(records[i].index, 1u);
    }
    EXPECT_EQ(grandChild->getHierarchicalId(), "Root/Moved/Child/GrandChild")
        << "the tree is consistent before the signal";

    records.clear();
    std::unique_ptr<Node> back = root.release(movedRaw);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[2].action, Zem::NotifyCollectionChangedAction::Removed);
}
