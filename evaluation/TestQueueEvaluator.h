#pragma once

#include <sigc++/signal.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace ZemTree {

class ITestContainer;

// Runs a list of tests one after another on a worker thread of its own, evaluates the actions between two
// consecutive tests, and tells its owner what goes on through four signals. It owns none of the tests.
//
// start, stop and the destructor belong to the owner's thread. Every signal but the started one reaches its
// handlers on the worker or on a test's own thread, so a handler that touches widgets hands over to the GUI
// thread. A handler of the finished signal must not call start: that would join the worker from the worker.
// Connect handlers while the queue is idle.
class TestQueueEvaluator {
public:
    TestQueueEvaluator() = default;
    TestQueueEvaluator(const TestQueueEvaluator&) = delete;
    TestQueueEvaluator& operator=(const TestQueueEvaluator&) = delete;
    // Stops a run in progress and joins its threads; blocks until the current test has ended.
    ~TestQueueEvaluator();

    // Begins a run over `tests` in their order; ignored while a run is in progress. Joins the threads left by
    // the run before, so it blocks while a handler of the last finished signal still runs.
    void start(const std::vector<ITestContainer*>& tests);
    // Asks the run to end: the current test is forced to stop, and the tests behind it are not begun.
    // Ignored when no run is in progress or a stop was already asked for. Returns at once.
    void stop();

    std::vector<ITestContainer*> getTestCollection() const { return _testCollection; }
    // The test last begun; null before the first, and it keeps its value after the run.
    ITestContainer* getCurrentTest() const { return _currentTest; }
    bool isStarted() const { return _isStarted; }
    bool isStoped() const { return _isStoped; }
    bool isFinished() const { return _isFinished; }

    // Each accessor returns a copy of the signal object, which shares its slots with the queue's own.
    // A run is about to start; emitted on the caller's thread of start.
    sigc::signal<void> getSignalStarted() const { return _signalStarted; }
    // The current test is over.
    sigc::signal<void> getSignalCurrentTestFinished() const { return _signalCurrentTestFinished; }
    // The run is over; the queue is already idle, and isStoped tells how the run ended.
    sigc::signal<void> getSignalFinished() const { return _signalFinished; }
    // A line of state text for the user: "[description] message", or an empty text that clears the display.
    sigc::signal<void, const std::string&> getSignalStateChanged() const { return _signalStateChanged; }

private:
    // Runs on the worker.
    void _testCollectionRunner();
    // Runs on the worker; blocks until the test has fired its finished signal.
    void _executeTest(ITestContainer* test);
    void _evaluteActions(ITestContainer* from, ITestContainer* to);
    void _finish();

    sigc::signal<void> _signalStarted;
    sigc::signal<void> _signalCurrentTestFinished;
    sigc::signal<void> _signalFinished;
    sigc::signal<void, const std::string&> _signalStateChanged;

    // Written by start while no worker reads it; read by the worker.
    std::vector<ITestContainer*> _testCollection;
    // Written by the worker, read by the stop thread and the owner.
    std::atomic<ITestContainer*> _currentTest{nullptr};
    std::thread _runnerThread;
    std::thread _stopThread;
    // Each flag has one writer at a time; atomics give their readers on other threads a defined view.
    std::atomic<bool> _isStarted{false};
    std::atomic<bool> _isStoped{false};
    std::atomic<bool> _isFinished{false};
};

} // namespace ZemTree
