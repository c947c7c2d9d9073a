#include "evaluation/TestQueueEvaluator.h"

#include "EvaluationTestNodes.h"
#include "core/common/ThreadHelper.h"
#include "core/tree/TreeLocalization.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using ZemTree::ITestContainer;
using ZemTree::TestQueueEvaluator;
using ZemTreeTest::EventLog;
using ZemTreeTest::FakeGroup;
using ZemTreeTest::FakeTest;
using ZemTreeTest::FinishMode;

namespace {

using Strings = std::vector<std::string>;

// Logs the four signals of a queue: "started", "state:<line>", "current-finished", "finished".
void logQueue(TestQueueEvaluator& queue, EventLog& log)
{
    queue.getSignalStarted().connect([&log] { log.add("started"); });
    queue.getSignalStateChanged().connect([&log](const std::string& line) { log.add("state:" + line); });
    queue.getSignalCurrentTestFinished().connect([&log] { log.add("current-finished"); });
    queue.getSignalFinished().connect([&log] { log.add("finished"); });
}

// A root group R holding the tests; the queue is declared last, so it dies first and joins its worker while
// the tests and the log still live.
class TestQueueEvaluatorTest : public ::testing::Test {
protected:
    TestQueueEvaluatorTest() { lng::language = 0; }
    ~TestQueueEvaluatorTest() override { lng::language = 0; }

    FakeTest* addTest(const std::string& id, FinishMode mode, Strings progress = {})
    {
        return _root->add(std::make_unique<FakeTest>(id, "Test " + id.substr(1), mode, _log, std::move(progress)));
    }
    // Starts the queue over `tests` and waits for its finished signal.
    void runToEnd(const std::vector<ITestContainer*>& tests)
    {
        _queue->start(tests);
        ASSERT_TRUE(_log.waitGate()) << "the queue did not finish";
    }

    EventLog _log;
    std::unique_ptr<FakeGroup> _root = std::make_unique<FakeGroup>("R", _log);
    std::unique_ptr<TestQueueEvaluator> _queue = [this] {
        auto queue = std::make_unique<TestQueueEvaluator>();
        logQueue(*queue, _log);
        return queue;
    }();
};

TEST_F(TestQueueEvaluatorTest, TwoTestsGiveTheWholeSequenceOfEventsInOrder)
{
    FakeTest* t1 = addTest("T1", FinishMode::OnRelease, {"step 1", "step 2"});
    FakeTest* t2 = addTest("T2", FinishMode::Synchronous, {"measured"});
    t1->release();
    bool startedInHandler = true;
    bool finishedInHandler = false;
    TestQueueEvaluator* queue = _queue.get();
    _queue->getSignalFinished().connect([&, queue] {
        startedInHandler = queue->isStarted();
        finishedInHandler = queue->isFinished();
    });
    EXPECT_EQ(_queue->getCurrentTest(), nullptr);

    runToEnd({t1, t2});

    const Strings expected = {"started",
                              "action:before-R",
                              "action:before-T1",
                              "state:[Test 1] test running",
                              "begin:T1",
                              "state:[Test 1] step 1",
                              "state:[Test 1] step 2",
                              "end:T1",
                              "state:",
                              "current-finished",
                              "action:after-T1",
                              "action:before-T2",
                              "state:[Test 2] test running",
                              "begin:T2",
                              "state:[Test 2] measured",
                              "end:T2",
                              "state:",
                              "current-finished",
                              "action:after-T2",
                              "action:after-R",
                              "finished"};
    EXPECT_EQ(_log.entries(), expected);
    _queue.reset();
    // The finished handler sees the queue idle and finished.
    EXPECT_FALSE(startedInHandler);
    EXPECT_TRUE(finishedInHandler);
}

TEST_F(TestQueueEvaluatorTest, StateLinesFollowTheLanguageAndTheWorkerCarriesTheQueueName)
{
    FakeTest* t1 = addTest("T1", FinishMode::Synchronous);
    std::string workerName;
    t1->getSignalIsRunningChanged().connect([&workerName](const bool& isRunning) {
        if (isRunning)
            workerName = Zem::ThreadHelper::getCurrentThreadName();
    });
    lng::language = 1;

    runToEnd({t1});

    EXPECT_EQ(_log.count("state:[Test 1] проверка запущена"), 1u);
    ASSERT_FALSE(workerName.empty());
    EXPECT_EQ(std::string("ZemTree_TestQueueEvaluator").rfind(workerName, 0), 0u) << workerName;
    EXPECT_EQ(_queue->getCurrentTest(), t1) << "the current test stays after the run";
}

TEST_F(TestQueueEvaluatorTest, EmptyListStartsAndFinishesWithNothingBetween)
{
    runToEnd({});

    EXPECT_EQ(_log.entries(), Strings({"started", "finished"}));
    EXPECT_TRUE(_queue->isFinished());
}

TEST_F(TestQueueEvaluatorTest, StartDuringARunIsIgnored)
{
    FakeTest* t1 = addTest("T1", FinishMode::OnRelease);
    FakeTest* t2 = addTest("T2", FinishMode::Synchronous);
    _queue->start({t1});
    ASSERT_TRUE(t1->waitBegun());

    _queue->start({t2});

    EXPECT_EQ(_queue->getTestCollection(), std::vector<ITestContainer*>({t1}));
    t1->release();
    ASSERT_TRUE(_log.waitGate());
    EXPECT_EQ(_log.count("started"), 1u);
    EXPECT_EQ(_log.count("begin:T2"), 0u);
}

TEST_F(TestQueueEvaluatorTest, StopDuringTheFirstOfThreeEndsTheRunAfterIt)
{
    FakeTest* t1 = addTest("T1", FinishMode::OnRelease, {"working"});
    FakeTest* t2 = addTest("T2", FinishMode::Synchronous);
    FakeTest* t3 = addTest("T3", FinishMode::Synchronous);
    _queue->stop();
    EXPECT_FALSE(_queue->isStoped()) << "stop on an idle queue does nothing";
    _queue->start({t1, t2, t3});
    ASSERT_TRUE(t1->waitBegun());

    _queue->stop();
    _queue->stop();
    EXPECT_TRUE(_queue->isStoped());
    ASSERT_TRUE(_log.waitGate());
    _queue->stop();

    EXPECT_EQ(_log.count("forceStop:T1"), 1u) << "a second stop forces the test only once";
    EXPECT_EQ(_log.count("begin:T2") + _log.count("begin:T3"), 0u);
    EXPECT_TRUE(_queue->isFinished());
    EXPECT_TRUE(_queue->isStoped());
    EXPECT_FALSE(_queue->isStarted());

    // The forced test still ends as usual, and its closing actions run before the finished signal.
    const Strings expectedTail = {"end:T1",          "state:",         "current-finished",
                                  "action:after-T1", "action:after-R", "finished"};
    const Strings entries = _log.entries();
    ASSERT_GE(entries.size(), expectedTail.size());
    EXPECT_EQ(Strings(entries.end() - static_cast<std::ptrdiff_t>(expectedTail.size()), entries.end()), expectedTail);
    EXPECT_EQ(_log.count("action:before-T2"), 0u);
}

TEST_F(TestQueueEvaluatorTest, QueueRunsAgainAfterItWasStopped)
{
    FakeTest* t1 = addTest("T1", FinishMode::OnRelease);
    FakeTest* t2 = addTest("T2", FinishMode::Synchronous);
    _queue->start({t1, t2});
    ASSERT_TRUE(t1->waitBegun());
    _queue->stop();
    ASSERT_TRUE(_log.waitGate());

    // The second run joins the worker and the stop thread of the first, and starts clean.
    t1->release();
    runToEnd({t2, t1});

    EXPECT_FALSE(_queue->isStoped());
    EXPECT_TRUE(_queue->isFinished());
    EXPECT_EQ(_log.count("begin:T1"), 2u);
    EXPECT_EQ(_log.count("begin:T2"), 1u);
    EXPECT_EQ(_log.count("finished"), 2u);
    EXPECT_EQ(_log.count("current-finished"), 3u);
}

TEST_F(TestQueueEvaluatorTest, DestructorDuringARunStopsAndJoins)
{
    FakeTest* t1 = addTest("T1", FinishMode::OnRelease);
    FakeTest* t2 = addTest("T2", FinishMode::Synchronous);
    _queue->start({t1, t2});
    ASSERT_TRUE(t1->waitBegun());

    _queue.reset();

    // Everything happened before the destructor returned.
    EXPECT_EQ(_log.count("forceStop:T1"), 1u);
    EXPECT_EQ(_log.count("begin:T2"), 0u);
    EXPECT_EQ(_log.count("end:T1"), 1u);
    EXPECT_EQ(_log.count("action:after-R"), 1u);
    EXPECT_EQ(_log.count("finished"), 1u);
}

} // namespace
