#include "ContainerTestNodes.h"
#include "core/common/AutoResetEvent.h"
#include "core/tree/ActionUnit.h"
#include "evaluation/TestQueueEvaluator.h"

#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

using namespace ZemTree;
using namespace ZemTreeTest;

namespace {

constexpr std::chrono::milliseconds timeout{10000};

// A test that runs on a thread of its own: it waits until it is released or forced to stop, then fills its
// results and finishes there.
class ThreadedTest : public SampleTest {
public:
    explicit ThreadedTest(const std::string& id, bool waitsForRelease = false)
        : SampleTest(id), _waitsForRelease(waitsForRelease)
    {
    }
    ~ThreadedTest() override
    {
        forceStopExecute();
        _join();
    }

    void forceStopExecute() override
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopRequested = true;
        _condition.notify_all();
    }
    bool wasStopped() const
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _wasStopped;
    }
    // Set once the test's thread has begun its run.
    Zem::AutoResetEvent started;

protected:
    void startExecute() override
    {
        SampleTest::startExecute();
        _join();
        {
            const std::lock_guard<std::mutex> lock(_mutex);
            _isStopRequested = false;
        }
        _thread = std::thread([this] { _run(); });
    }

private:
    void _run()
    {
        started.set();
        bool stopped = false;
        if (_waitsForRelease) {
            std::unique_lock<std::mutex> lock(_mutex);
            _condition.wait(lock, [this] { return _isStopRequested; });
            stopped = true;
            _wasStopped = true;
        }
        first->setResult(stopped ? ResultState::Empty : ResultState::Ok);
        second->setResult(stopped ? ResultState::Empty : ResultState::NotOk);
        _finishExecute();
    }
    void _join()
    {
        if (_thread.joinable())
            _thread.join();
    }

    const bool _waitsForRelease;
    mutable std::mutex _mutex;
    std::condition_variable _condition;
    bool _isStopRequested = false;
    bool _wasStopped = false;
    std::thread _thread;
};

struct Project {
    SampleRoot root;
    SampleProtection* protection = nullptr;
    std::vector<ThreadedTest*> tests;

    explicit Project(int count, int waitingIndex = -1)
    {
        root.initContainer();
        protection = addFilled<SampleProtection>(root.getContainers(), "Protection");
        for (int i = 0; i < count; ++i)
            tests.push_back(
                addFilled<ThreadedTest>(protection->getTests(), "T" + std::to_string(i), i == waitingIndex));
        root.setIsEvaluated(true);
    }
    std::vector<ITestContainer*> queueList() const { return std::vector<ITestContainer*>(tests.begin(), tests.end()); }
};

} // namespace

TEST(TestContainerQueue, TestsFinishingOnTheirOwnThreadsRunThrough)
{
    Project project(3);
    int countersSignals = 0;
    project.root.getSignalCountersChanged().connect([&countersSignals] { ++countersSignals; });
    Zem::AutoResetEvent finished;
    TestQueueEvaluator queue;
    queue.getSignalFinished().connect([&finished] { finished.set(); });

    queue.start(project.queueList());
    ASSERT_TRUE(finished.waitOne(timeout));

    for (ThreadedTest* test : project.tests) {
        SCOPED_TRACE(test->getId());
        EXPECT_FALSE(test->isRunning());
        EXPECT_EQ(test->startCount, 1);
        EXPECT_GT(test->getStartTime().time_since_epoch().count(), 0);
        EXPECT_GE(test->getFinishTime(), test->getStartTime());
        EXPECT_EQ(test->getActionBefore()->getEvaluationCount(), 1u);
        EXPECT_EQ(test->getActionAfter()->getEvaluationCount(), 1u);
    }
    // The shared containers are entered once and left once.
    EXPECT_EQ(project.protection->getActionBefore()->getEvaluationCount(), 1u);
    EXPECT_EQ(project.protection->getActionAfter()->getEvaluationCount(), 1u);
    EXPECT_EQ(project.root.getActionAfter()->getEvaluationCount(), 1u);
    EXPECT_EQ(project.root.getCounters(), (TestCounters{3, 3, 0}));
    EXPECT_EQ(countersSignals, 3);
    EXPECT_FALSE(queue.isStoped());
}

TEST(TestContainerQueue, StopEndsTheRunningTestAndSkipsTheRest)
{
    Project project(3, 1);
    Zem::AutoResetEvent finished;
    TestQueueEvaluator queue;
    queue.getSignalFinished().connect([&finished] { finished.set(); });

    queue.start(project.queueList());
    ASSERT_TRUE(project.tests[1]->started.waitOne(timeout));
    queue.stop();
    ASSERT_TRUE(finished.waitOne(timeout));

    EXPECT_TRUE(queue.isStoped());
    EXPECT_TRUE(project.tests[1]->wasStopped());
    EXPECT_FALSE(project.tests[1]->isRunning());
    EXPECT_EQ(project.tests[2]->startCount, 0);
    EXPECT_EQ(project.tests[2]->getStartTime().time_since_epoch().count(), 0);
    EXPECT_EQ(project.root.getCounters(), (TestCounters{1, 1, 4}));
}

TEST(TestContainerQueue, TestListedTwiceRunsTwice)
{
    Project project(1);
    Zem::AutoResetEvent finished;
    TestQueueEvaluator queue;
    queue.getSignalFinished().connect([&finished] { finished.set(); });

    queue.start({project.tests[0], project.tests[0]});
    ASSERT_TRUE(finished.waitOne(timeout));
    EXPECT_EQ(project.tests[0]->startCount, 2);
    EXPECT_FALSE(project.tests[0]->isRunning());
}
