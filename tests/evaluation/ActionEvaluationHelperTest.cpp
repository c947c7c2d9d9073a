#include "evaluation/ActionEvaluationHelper.h"

#include "EvaluationTestNodes.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using ZemTree::ActionEvaluationHelper;
using ZemTree::ITestContainer;
using ZemTreeTest::EventLog;
using ZemTreeTest::FakeGroup;
using ZemTreeTest::FakeTest;
using ZemTreeTest::FinishMode;

namespace {

using Strings = std::vector<std::string>;

FakeTest* addTest(ZemTree::Node* parent, const std::string& id, EventLog& log)
{
    return parent->add(std::make_unique<FakeTest>(id, id, FinishMode::Synchronous, log));
}

// Evaluates the actions along a whole run over `tests`, as the queue walks it.
void walkRun(const std::vector<ITestContainer*>& tests)
{
    ITestContainer* previous = nullptr;
    for (ITestContainer* test : tests) {
        ActionEvaluationHelper::evaluateCrossActions(previous, test);
        previous = test;
    }
    ActionEvaluationHelper::evaluateCrossActions(previous, nullptr);
}

// R{G1{T1, T2}, G2{T3}}
class ActionEvaluationHelperTest : public ::testing::Test {
protected:
    ActionEvaluationHelperTest()
    {
        _g1 = _root->add(std::make_unique<FakeGroup>("G1", _log));
        _g2 = _root->add(std::make_unique<FakeGroup>("G2", _log));
        _t1 = addTest(_g1, "T1", _log);
        _t2 = addTest(_g1, "T2", _log);
        _t3 = addTest(_g2, "T3", _log);
    }

    EventLog _log;
    std::unique_ptr<FakeGroup> _root = std::make_unique<FakeGroup>("R", _log);
    FakeGroup* _g1 = nullptr;
    FakeGroup* _g2 = nullptr;
    FakeTest* _t1 = nullptr;
    FakeTest* _t2 = nullptr;
    FakeTest* _t3 = nullptr;
};

TEST_F(ActionEvaluationHelperTest, RunOverThreeTestsEntersAndLeavesEachContainerOnce)
{
    walkRun({_t1, _t2, _t3});

    const Strings expected = {
        "action:before-R",  "action:before-G1", "action:before-T1", "action:after-T1",
        "action:before-T2", "action:after-T2",  "action:after-G1",  "action:before-G2",
        "action:before-T3", "action:after-T3",  "action:after-G2",  "action:after-R",
    };
    EXPECT_EQ(_log.entries(), expected);
}

TEST_F(ActionEvaluationHelperTest, SingleStepsRunOnlyTheActionsBetweenTheirEnds)
{
    struct Row {
        std::string text;
        ITestContainer* from;
        ITestContainer* to;
        Strings expected;
    };
    const std::vector<Row> rows = {
        {"two nulls", nullptr, nullptr, {}},
        {"a test to itself", _t1, _t1, {}},
        {"siblings", _t1, _t2, {"action:after-T1", "action:before-T2"}},
        {"siblings backwards", _t2, _t1, {"action:after-T2", "action:before-T1"}},
        {"across groups", _t3, _t1, {"action:after-T3", "action:after-G2", "action:before-G1", "action:before-T1"}},
        {"from nothing", nullptr, _t3, {"action:before-R", "action:before-G2", "action:before-T3"}},
        {"to nothing", _t2, nullptr, {"action:after-T2", "action:after-G1", "action:after-R"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        // Only what this row adds to the shared log counts.
        const std::size_t before = _log.entries().size();
        ActionEvaluationHelper::evaluateCrossActions(row.from, row.to);
        const Strings all = _log.entries();
        EXPECT_EQ(Strings(all.begin() + static_cast<std::ptrdiff_t>(before), all.end()), row.expected);
    }
}

TEST_F(ActionEvaluationHelperTest, ToADescendantOfFromLeavesNothing)
{
    // A test nested in a test: the outer one stays entered.
    FakeTest* inner = addTest(_t1, "Inner", _log);

    ActionEvaluationHelper::evaluateCrossActions(_t1, inner);

    EXPECT_EQ(_log.entries(), Strings({"action:before-Inner"}));
}

TEST_F(ActionEvaluationHelperTest, ToAnAncestorOfFromLeavesUpToIt)
{
    FakeTest* inner = addTest(_t1, "Inner", _log);

    ActionEvaluationHelper::evaluateCrossActions(inner, _t1);

    EXPECT_EQ(_log.entries(), Strings({"action:after-Inner"}));
}

TEST_F(ActionEvaluationHelperTest, EachActionRunsWithoutAnEngine)
{
    ZemTree::IActionEngineAPI* seen = reinterpret_cast<ZemTree::IActionEngineAPI*>(&_log);
    int evaluations = 0;
    _t2->getActionBefore()->getSignalEvaluated().connect([&](ZemTree::ActionUnit*, ZemTree::IActionEngineAPI* api) {
        seen = api;
        ++evaluations;
    });

    ActionEvaluationHelper::evaluateCrossActions(_t1, _t2);

    EXPECT_EQ(evaluations, 1);
    EXPECT_EQ(seen, nullptr);
    EXPECT_EQ(_t2->getActionBefore()->getEvaluationCount(), 1u);
    EXPECT_EQ(_t1->getActionBefore()->getEvaluationCount(), 0u);
}

TEST(ActionEvaluationHelperTreesTest, UnrelatedTreesLeaveTheFirstWholeAndEnterTheSecondWhole)
{
    EventLog log;
    auto firstRoot = std::make_unique<FakeGroup>("R1", log);
    auto secondRoot = std::make_unique<FakeGroup>("R2", log);
    FakeGroup* firstGroup = firstRoot->add(std::make_unique<FakeGroup>("G1", log));
    FakeTest* first = addTest(firstGroup, "T1", log);
    FakeTest* second = addTest(secondRoot.get(), "T2", log);

    ActionEvaluationHelper::evaluateCrossActions(first, second);

    const Strings expected = {"action:after-T1", "action:after-G1", "action:after-R1", "action:before-R2",
                              "action:before-T2"};
    EXPECT_EQ(log.entries(), expected);
}

TEST(ActionEvaluationHelperTreesTest, StructuralNodeWithoutActionsIsPassedOverYetSharedByItsTests)
{
    // R{Tests{T1, T2}, Other{T3}}: the plain sections have no actions, but "Tests" is still where T1 and T2
    // meet, so neither R nor anything above the section is left between them.
    EventLog log;
    auto root = std::make_unique<FakeGroup>("R", log);
    ZemTree::Node* section = root->add(std::make_unique<ZemTree::Unitable>("Tests"));
    ZemTree::Node* other = root->add(std::make_unique<ZemTree::Unitable>("Other"));
    FakeTest* t1 = addTest(section, "T1", log);
    FakeTest* t2 = addTest(section, "T2", log);
    FakeTest* t3 = addTest(other, "T3", log);

    walkRun({t1, t2, t3});

    const Strings expected = {"action:before-R", "action:before-T1", "action:after-T1", "action:before-T2",
                              "action:after-T2", "action:before-T3", "action:after-T3", "action:after-R"};
    EXPECT_EQ(log.entries(), expected);
}

TEST(ActionEvaluationHelperTreesTest, NodeWithoutActionUnitsIsSkipped)
{
    // A container whose action getters give null runs nothing, yet the walk goes on past it.
    class Bare : public ZemTree::Unitable, public virtual ZemTree::ITestActionContainer {
    public:
        Bare() : ZemTree::Unitable("Bare") {}
        Zem::Nullable<bool> getIsEvaluated() override { return {}; }
        ZemTree::ActionUnit* getActionBefore() override { return nullptr; }
        ZemTree::ActionUnit* getActionAfter() override { return nullptr; }
    };
    EventLog log;
    auto root = std::make_unique<FakeGroup>("R", log);
    Bare* bare = root->add(std::make_unique<Bare>());
    FakeTest* test = addTest(bare, "T", log);

    walkRun({test});

    EXPECT_EQ(log.entries(), Strings({"action:before-R", "action:before-T", "action:after-T", "action:after-R"}));
}

} // namespace
