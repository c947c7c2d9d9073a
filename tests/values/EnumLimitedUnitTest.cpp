#include "values/EnumLimitedUnit.h"

#include "ValueTestSupport.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/LocalString.h"
#include "core/tree/Node.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>

using namespace ValueTest;
using ZemTree::EnumLimiter;
using ZemTree::LocalString;
using ZemTree::Node;

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
