#include "ContainerTestNodes.h"
#include "core/common/AutoResetEvent.h"
#include "core/common/DateTimeHelper.h"
#include "core/tree/ActionUnit.h"
#include "core/tree/DisplayXmlParameters.h"
#include "evaluation/TestQueueEvaluator.h"

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace ZemTree;
using namespace ZemTreeTest;

namespace {

using Clock = std::chrono::system_clock;

void readAttributes(TestContainer& test, const std::string& attributes, std::uint8_t kind = SerializationMode::User)
{
    xmlpp::DomParser parser;
    parser.parse_memory("<Node Id='" + test.getId() + "' " + attributes + "/>");
    test.setXml(parser.get_document()->get_root_node(), modeOf(kind));
}

// Records the test's own signals in order.
struct SignalLog {
    std::vector<std::string> entries;
    explicit SignalLog(TestContainer& test)
    {
        test.getSignalIsRunningChanged().connect(
            [this](const bool& running) { entries.push_back(running ? "running" : "idle"); });
        test.getSignalStartTimeChanged().connect([this] { entries.push_back("start"); });
        test.getSignalFinishTimeChanged().connect([this] { entries.push_back("finish"); });
        test.getSignalFinished().connect([this] { entries.push_back("finished"); });
    }
};

// Sets the time zone to UTC for the life of the guard, so that report times do not depend on the machine.
class UtcZone {
public:
    UtcZone() : _old(std::getenv("TZ") != nullptr ? std::optional<std::string>(std::getenv("TZ")) : std::nullopt)
    {
        setenv("TZ", "UTC", 1);
        tzset();
    }
    ~UtcZone()
    {
        _old ? setenv("TZ", _old->c_str(), 1) : unsetenv("TZ");
        tzset();
    }
    UtcZone(const UtcZone&) = delete;
    UtcZone& operator=(const UtcZone&) = delete;

private:
    std::optional<std::string> _old;
};

} // namespace

TEST(TestContainer, IsEvaluatedIsReadFromSixWordsOnly)
{
    struct Row {
        const char* word;
        bool initial;
        bool expected;
    };
    const Row rows[] = {
        {"true", false, true}, {"1", false, true},      {"True", false, true},  {"false", true, false},
        {"0", true, false},    {"False", true, false},  {"TRUE", false, false}, {"yes", true, true},
        {"", true, true},      {" true", false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.word);
        SampleTest test("Test");
        test.initContainer();
        test.setIsEvaluated(row.initial);
        readAttributes(test, std::string("IsEvaluated='") + row.word + "'");
        EXPECT_EQ(test.getIsEvaluated(), Zem::Nullable<bool>(row.expected));
    }

    SampleTest templated("Test");
    readAttributes(templated, "IsEvaluated='true'", SerializationMode::System);
    EXPECT_EQ(templated.getIsEvaluated(), Zem::Nullable<bool>(false));
}

TEST(TestContainer, BadTimesLeaveTheFieldsAndFireNothing)
{
    SampleTest test("Test");
    test.initContainer();
    readAttributes(test, "StartTimeMs='1000' FinishTimeMs='2000'");
    SignalLog log(test);
    for (const char* text : {"", "12x", "1.5", "99999999999999999999", "9223372036854775807", "x"}) {
        SCOPED_TRACE(text);
        readAttributes(test, std::string("StartTimeMs='") + text + "' FinishTimeMs='" + text + "'");
        EXPECT_EQ(Zem::DateTimeHelper::toMilliseconds(test.getStartTime()), 1000);
        EXPECT_EQ(Zem::DateTimeHelper::toMilliseconds(test.getFinishTime()), 2000);
    }
    readAttributes(test, "StartTimeMs='0'");
    EXPECT_EQ(test.getStartTime().time_since_epoch().count(), 0);
    // Times read from a file are stored straight, without signals.
    EXPECT_TRUE(log.entries.empty());
}

TEST(TestContainer, ResultUnitsAreCounted)
{
    struct Row {
        const char* text;
        std::optional<ResultState> first;
        std::optional<ResultState> second;
        TestCounters expected;
    };
    const Row rows[] = {
        {"no results yet", std::nullopt, std::nullopt, {0, 0, 2}},
        {"empty is not tested", ResultState::Empty, std::nullopt, {0, 0, 2}},
        {"ok and not ok", ResultState::Ok, ResultState::NotOk, {1, 1, 0}},
        {"error is a failure", ResultState::Error, ResultState::Ok, {1, 1, 0}},
        {"a state out of the four fails", static_cast<ResultState>(7), ResultState::Empty, {0, 1, 1}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        SampleTest test("Test");
        test.initContainer();
        test.first->setResult(row.first);
        test.second->setResult(row.second);
        EXPECT_EQ(test.getCounters(), row.expected);
    }

    SampleTest unfilled("Unfilled");
    EXPECT_EQ(unfilled.getCounters(), TestCounters());
}

TEST(TestContainer, RunStampsTimesAndSignalsInOrder)
{
    SampleTest test("Test");
    test.initContainer();
    SignalLog log(test);
    const Clock::time_point before = Clock::now();

    test.beginExecute();
    EXPECT_TRUE(test.isRunning());
    EXPECT_EQ(test.startCount, 1);
    EXPECT_GE(test.getStartTime(), before);
    EXPECT_EQ(test.getFinishTime().time_since_epoch().count(), 0);
    EXPECT_EQ(log.entries, (std::vector<std::string>{"start", "running"}));

    log.entries.clear();
    test._finishExecute();
    EXPECT_FALSE(test.isRunning());
    EXPECT_GE(test.getFinishTime(), test.getStartTime());
    EXPECT_EQ(log.entries, (std::vector<std::string>{"finish", "idle", "finished"}));

    log.entries.clear();
    test._finishExecute();
    EXPECT_TRUE(log.entries.empty());
}

TEST(TestContainer, SecondBeginOnARunningTestIsRefused)
{
    SampleTest test("Distance zone 1");
    test.initContainer();
    test.beginExecute();
    const Clock::time_point started = test.getStartTime();
    SignalLog log(test);

    EXPECT_THAT([&] { test.beginExecute(); },
                ::testing::ThrowsMessage<std::logic_error>(::testing::StrEq("Test Distance zone 1 allready running.")));
    EXPECT_TRUE(test.isRunning());
    EXPECT_EQ(test.getStartTime(), started);
    EXPECT_EQ(test.startCount, 1);
    EXPECT_TRUE(log.entries.empty());
}

TEST(TestContainer, FinishCarriesTheCountersUpTheTree)
{
    SampleRoot root;
    root.initContainer();
    auto* protection = addFilled<SampleProtection>(root.getContainers(), "Protection");
    auto* test = addFilled<SampleTest>(protection->getTests(), "Test");
    int rootSignals = 0;
    root.getSignalCountersChanged().connect([&rootSignals] { ++rootSignals; });

    test->beginExecute();
    test->first->setResult(ResultState::Ok);
    test->second->setResult(ResultState::Error);
    EXPECT_EQ(rootSignals, 0);
    test->_finishExecute();

    EXPECT_EQ(rootSignals, 1);
    EXPECT_EQ(root.getCounters(), (TestCounters{1, 1, 0}));

    test->setIsEvaluated(true);
    test->clearResults();
    EXPECT_EQ(rootSignals, 2);
    EXPECT_EQ(root.getCounters(), (TestCounters{0, 0, 2}));
    EXPECT_EQ(test->getStartTime().time_since_epoch().count(), 0);
    EXPECT_EQ(test->getFinishTime().time_since_epoch().count(), 0);
    EXPECT_EQ(test->getIsEvaluated(), Zem::Nullable<bool>(true));
}

TEST(TestContainerReport, ReportOfAFinishedTestCarriesItsTimes)
{
    const UtcZone zone;
    SampleTest test("Test");
    test.initContainer();
    readAttributes(test, "StartTimeMs='1700000000000' FinishTimeMs='1700003723000'");

    xmlpp::Document document;
    DisplayXmlParameters parameters("/tmp");
    test.getDisplayXml(parameters, document.create_root_node("Report"));
    const auto* element = static_cast<const xmlpp::Element*>(document.get_root_node()->find("Node").front());
    EXPECT_EQ(attributeOf(element, "StartDate"), "14.11.2023");
    EXPECT_EQ(attributeOf(element, "StartTime"), "22:13:20");
    EXPECT_EQ(attributeOf(element, "EndDate"), "14.11.2023");
    EXPECT_EQ(attributeOf(element, "EndTime"), "23:15:23");
    EXPECT_EQ(attributeOf(element, "ElapsedTime"), "01:02:03");
    EXPECT_EQ(attributeOf(element, "Mode"), "<none>");
}

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
