#include "evaluation/ActionEvaluationHelper.h"

#include "EvaluationTestNodes.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <string>
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

// R{G1{T1{Inner}, T2}, G2{T3}}, and a second tree R2{T4}.
class ActionEvaluationHelperTest : public ::testing::Test {
protected:
    ActionEvaluationHelperTest()
    {
        FakeGroup* g1 = _root->add(std::make_unique<FakeGroup>("G1", _log));
        FakeGroup* g2 = _root->add(std::make_unique<FakeGroup>("G2", _log));
        _t1 = addTest(g1, "T1", _log);
        _inner = addTest(_t1, "Inner", _log);
        _t2 = addTest(g1, "T2", _log);
        _t3 = addTest(g2, "T3", _log);
        _t4 = addTest(_otherRoot.get(), "T4", _log);
    }

    EventLog _log;
    std::unique_ptr<FakeGroup> _root = std::make_unique<FakeGroup>("R", _log);
    std::unique_ptr<FakeGroup> _otherRoot = std::make_unique<FakeGroup>("R2", _log);
    FakeTest* _t1 = nullptr;
    FakeTest* _inner = nullptr;
    FakeTest* _t2 = nullptr;
    FakeTest* _t3 = nullptr;
    FakeTest* _t4 = nullptr;
};

TEST_F(ActionEvaluationHelperTest, RunOverThreeTestsEntersAndLeavesEachContainerOnce)
{
    ZemTree::IActionEngineAPI* seen = reinterpret_cast<ZemTree::IActionEngineAPI*>(&_log);
    _t2->getActionBefore()->getSignalEvaluated().connect(
        [&seen](ZemTree::ActionUnit*, ZemTree::IActionEngineAPI* api) { seen = api; });

    walkRun({_t1, _t2, _t3});

    const Strings expected = {
        "action:before-R",  "action:before-G1", "action:before-T1", "action:after-T1",
        "action:before-T2", "action:after-T2",  "action:after-G1",  "action:before-G2",
        "action:before-T3", "action:after-T3",  "action:after-G2",  "action:after-R",
    };
    EXPECT_EQ(_log.entries(), expected);
    EXPECT_EQ(seen, nullptr) << "each action runs without an engine";
}

TEST_F(ActionEvaluationHelperTest, SingleStepsRunOnlyTheActionsBetweenTheirEnds)
{
    const struct {
        const char* text;
        ITestContainer* from;
        ITestContainer* to;
        Strings expected;
    } rows[] = {
        {"two nulls", nullptr, nullptr, {}},
        {"a test to itself", _t1, _t1, {}},
        {"siblings backwards", _t2, _t1, {"action:after-T2", "action:before-T1"}},
        {"across groups", _t3, _t1, {"action:after-T3", "action:after-G2", "action:before-G1", "action:before-T1"}},
        {"from nothing", nullptr, _t3, {"action:before-R", "action:before-G2", "action:before-T3"}},
        {"to nothing", _t2, nullptr, {"action:after-T2", "action:after-G1", "action:after-R"}},
        // A test nested in a test: the outer one stays entered.
        {"to a descendant", _t1, _inner, {"action:before-Inner"}},
        {"to an ancestor", _inner, _t1, {"action:after-Inner"}},
        {"unrelated trees",
         _inner,
         _t4,
         {"action:after-Inner", "action:after-T1", "action:after-G1", "action:after-R", "action:before-R2",
          "action:before-T4"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        // Only what this row adds to the shared log counts.
        const std::size_t before = _log.entries().size();
        ActionEvaluationHelper::evaluateCrossActions(row.from, row.to);
        const Strings all = _log.entries();
        EXPECT_EQ(Strings(all.begin() + static_cast<std::ptrdiff_t>(before), all.end()), row.expected);
    }
}

TEST(ActionEvaluationHelperTreesTest, NodesWithoutActionsArePassedOverYetSharedByTheirTests)
{
    // R{Tests{T1, T2}, Bare{T3}}: the plain section has no actions, but it is still where T1 and T2 meet, so R is
    // not left between them; a container whose action getters give null runs nothing.
    class Bare : public ZemTree::Unitable, public virtual ZemTree::ITestActionContainer {
    public:
        Bare() : ZemTree::Unitable("Bare") {}
        Zem::Nullable<bool> getIsEvaluated() override { return {}; }
        ZemTree::ActionUnit* getActionBefore() override { return nullptr; }
        ZemTree::ActionUnit* getActionAfter() override { return nullptr; }
    };
    EventLog log;
    auto root = std::make_unique<FakeGroup>("R", log);
    ZemTree::Node* section = root->add(std::make_unique<ZemTree::Unitable>("Tests"));
    FakeTest* t1 = addTest(section, "T1", log);
    FakeTest* t2 = addTest(section, "T2", log);
    FakeTest* t3 = addTest(root->add(std::make_unique<Bare>()), "T3", log);

    walkRun({t1, t2, t3});

    const Strings expected = {"action:before-R", "action:before-T1", "action:after-T1", "action:before-T2",
                              "action:after-T2", "action:before-T3", "action:after-T3", "action:after-R"};
    EXPECT_EQ(log.entries(), expected);
}

} // namespace
