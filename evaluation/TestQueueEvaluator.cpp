#include "evaluation/TestQueueEvaluator.h"

#include "core/common/AutoResetEvent.h"
#include "core/common/ThreadHelper.h"
#include "evaluation/ActionEvaluationHelper.h"
#include "evaluation/ITestContainer.h"
#include "localisation/TreeRelay.h"

#include <sigc++/connection.h>

#include <memory>

namespace ZemTree {

namespace {

std::string stateLine(ITestContainer* test, const std::string& message)
{
    return "[" + test->getDescription() + "] " + message;
}

// What the worker waits on while a test runs. It lives on the heap and is shared with the slot on the test's
// finished signal: the test's thread is still inside that signal when the worker wakes, so the slot releases
// its own connection there, and the worker never touches the test's signal again.
struct FinishGate {
    Zem::AutoResetEvent event;
    sigc::connection finishedConnection;
};

} // namespace

TestQueueEvaluator::~TestQueueEvaluator()
{
    stop();
    if (_stopThread.joinable())
        _stopThread.join();
    if (_runnerThread.joinable())
        _runnerThread.join();
}

void TestQueueEvaluator::start(const std::vector<ITestContainer*>& tests)
{
    if (_isStarted)
        return;
    _isStarted = true;
    _isStoped = false;
    _isFinished = false;
    _currentTest = nullptr;

    if (&tests != &_testCollection)
        _testCollection = tests;

    // The threads of the run before end soon after its finished signal; they are joined here, not sooner.
    if (_stopThread.joinable())
        _stopThread.join();
    if (_runnerThread.joinable())
        _runnerThread.join();

    _signalStarted.emit();
    _runnerThread = std::thread([this] { _testCollectionRunner(); });
}

void TestQueueEvaluator::stop()
{
    if (!_isStarted || _isStoped)
        return;
    _isStoped = true;
    if (_stopThread.joinable())
        return;

    // A thread of its own, so that stop returns at once whatever the test's forced stop waits for, for
    // instance the very thread that called stop.
    _stopThread = std::thread([this] {
        if (ITestContainer* test = _currentTest)
            test->forceStopExecute();
    });
}

void TestQueueEvaluator::_testCollectionRunner()
{
    Zem::ThreadHelper::setCurrentThreadName("ZemTree_TestQueueEvaluator");

    for (ITestContainer* test : _testCollection) {
        if (_isStoped)
            break;
        _evaluteActions(_currentTest, test);
        _currentTest = test;
        _executeTest(test);
    }

    // Also after a stop: the last test begun and its containers are left properly.
    _evaluteActions(_currentTest, nullptr);
    _finish();
}

void TestQueueEvaluator::_executeTest(ITestContainer* test)
{
    const auto gate = std::make_shared<FinishGate>();

    sigc::connection stateConnection = test->getSignalStateMessage().connect(
        [this, test](const std::string& message) { _signalStateChanged.emit(stateLine(test, message)); });
    gate->finishedConnection = test->getSignalFinished().connect([gate] {
        gate->finishedConnection.disconnect();
        gate->finishedConnection = sigc::connection();
        gate->event.set();
    });

    _signalStateChanged.emit(stateLine(test, lng::TreeRelay::get("testQueue_testRunning")));
    test->beginExecute();

    // No time-out: the test decides when it is over. A set() that came inside beginExecute is kept.
    gate->event.waitOne();

    stateConnection.disconnect();
    gate->finishedConnection.disconnect();

    _signalStateChanged.emit(std::string());
    _signalCurrentTestFinished.emit();
}

void TestQueueEvaluator::_evaluteActions(ITestContainer* from, ITestContainer* to)
{
    ActionEvaluationHelper::evaluateCrossActions(from, to);
}

void TestQueueEvaluator::_finish()
{
    // Idle before the signal, so that a handler sees the queue as it is; _isStoped still tells how it ended.
    _isStarted = false;
    _isFinished = true;
    _signalFinished.emit();
}

} // namespace ZemTree
