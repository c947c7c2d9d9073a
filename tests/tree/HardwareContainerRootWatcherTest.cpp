#include "core/tree/HardwareContainerRootWatcher.h"

#include "contactunits/ContactUnitsTestSupport.h"
#include "containers/UnitableStructureContainer.h"
#include "core/device/HardwareManager.h"
#include "core/tree/Node.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using ContactUnitsTest::HardwareNode;
using ContactUnitsTest::moveTo;
using ZemDevice::HardwareManager;
using ZemTree::HardwareContainerRootWatcher;
using ZemTree::Node;

// A watched node that is a hardware container itself, so that a test sees the watcher pass over the node's own
// hardware. It records every published answer.
class WatchedNode : public HardwareNode {
public:
    explicit WatchedNode(const std::string& id = "Watched") : HardwareNode(id), watcher(this)
    {
        watcher.getSignalParentHardwareChanged().connect([this] { published.push_back(watcher.getHardware()); });
    }

    HardwareContainerRootWatcher watcher;
    std::vector<HardwareManager*> published;
};

TEST(HardwareContainerRootWatcherTest, NodeNeverFindsItsOwnHardware)
{
    HardwareManager own;
    HardwareManager above;
    HardwareNode root("Root");
    WatchedNode* const node = root.add(std::make_unique<WatchedNode>());
    node->setHardware(&own);
    EXPECT_EQ(nullptr, node->watcher.getHardware());
    EXPECT_TRUE(node->published.empty());

    root.setHardware(&above);
    EXPECT_EQ(&above, node->watcher.getHardware());
    EXPECT_EQ(std::vector<HardwareManager*>{&above}, node->published);
}

TEST(HardwareContainerRootWatcherTest, NearerHardwareWinsAndFartherChangesBehindItStayQuiet)
{
    HardwareManager far;
    HardwareManager near;
    HardwareManager farAgain;
    HardwareNode root("Root");
    // A plain node between the containers is passed over.
    Node* const plain = root.add(std::make_unique<Node>("Plain"));
    HardwareNode* const middle = plain->add(std::make_unique<HardwareNode>("Middle"));
    WatchedNode* const node = middle->add(std::make_unique<WatchedNode>());
    EXPECT_TRUE(node->published.empty());

    root.setHardware(&far);
    middle->setHardware(&near);
    root.setHardware(&farAgain);
    EXPECT_EQ((std::vector<HardwareManager*>{&far, &near}), node->published);

    // Without the nearer hardware the farther one applies again.
    middle->setHardware(nullptr);
    EXPECT_EQ((std::vector<HardwareManager*>{&far, &near, &farAgain}), node->published);
}

TEST(HardwareContainerRootWatcherTest, NodeAddedUnderHardwarePublishesItOnceAndSameAnswerNothing)
{
    HardwareManager hardware;
    HardwareNode root("Root", &hardware);
    HardwareNode* const middle = root.add(std::make_unique<HardwareNode>("Middle"));
    auto owned = std::make_unique<WatchedNode>();
    EXPECT_EQ(nullptr, owned->watcher.getHardware());
    WatchedNode* const node = middle->add(std::move(owned));
    ASSERT_EQ(std::vector<HardwareManager*>{&hardware}, node->published);
    EXPECT_EQ(&hardware, node->watcher.getHardware());

    root.announceUnchanged();
    middle->announceUnchanged();
    middle->setHardware(&hardware);

    EXPECT_EQ(1u, node->published.size());
}

TEST(HardwareContainerRootWatcherTest, MoveAwayPublishesNullAndTheOldPlaceIsForgotten)
{
    HardwareManager hardware;
    HardwareManager later;
    HardwareNode root("Root");
    HardwareNode* const withHardware = root.add(std::make_unique<HardwareNode>("With", &hardware));
    HardwareNode* const without = root.add(std::make_unique<HardwareNode>("Without"));
    WatchedNode* node = withHardware->add(std::make_unique<WatchedNode>());

    node = moveTo(node, without);
    EXPECT_EQ((std::vector<HardwareManager*>{&hardware, nullptr}), node->published);
    EXPECT_EQ(nullptr, node->watcher.getHardware());

    withHardware->setHardware(&later);
    withHardware->setHardware(nullptr);
    EXPECT_EQ(2u, node->published.size());

    // The new place is watched: also the root, which was an ancestor before and still is.
    root.setHardware(&later);
    EXPECT_EQ((std::vector<HardwareManager*>{&hardware, nullptr, &later}), node->published);
}

TEST(HardwareContainerRootWatcherTest, MovingAnAncestorMovesTheWatch)
{
    HardwareManager first;
    HardwareManager second;
    HardwareNode root("Root");
    HardwareNode* const left = root.add(std::make_unique<HardwareNode>("Left", &first));
    HardwareNode* const right = root.add(std::make_unique<HardwareNode>("Right", &second));
    Node* group = left->add(std::make_unique<Node>("Group"));
    WatchedNode* const node = group->add(std::make_unique<WatchedNode>());

    group = moveTo(group, right);

    EXPECT_EQ(&second, node->watcher.getHardware());
    EXPECT_EQ(&second, node->published.back());
    const std::size_t count = node->published.size();
    left->setHardware(nullptr);
    EXPECT_EQ(count, node->published.size());
}

TEST(HardwareContainerRootWatcherTest, FollowsTheHardwareOfTheTreeContainers)
{
    HardwareManager hardware;
    ZemTree::UnitableStructureContainer root("Root");
    WatchedNode* const node = root.add(std::make_unique<WatchedNode>());
    root.setHardware(&hardware);
    root.setHardware(&hardware);
    EXPECT_EQ(std::vector<HardwareManager*>{&hardware}, node->published);
}

TEST(HardwareContainerRootWatcherTest, DyingAncestorLeavesNoDanglingWatch)
{
    HardwareManager hardware;
    HardwareNode root("Root");
    HardwareNode* const middle = root.add(std::make_unique<HardwareNode>("Middle", &hardware));
    WatchedNode* node = middle->add(std::make_unique<WatchedNode>());
    node = moveTo(node, &root);
    // The former parent dies; the watcher must not be reached through it any more.
    root.remove(middle);
    root.setHardware(&hardware);
    EXPECT_EQ((std::vector<HardwareManager*>{&hardware, nullptr, &hardware}), node->published);
}

} // namespace
