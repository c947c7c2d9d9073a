#pragma once

#include "evaluation/ITestableContainer.h"

#include <sigc++/signal.h>

#include <chrono>
#include <string>

namespace ZemTree {

// One executable test as the queue sees it: it is begun, may be forced to stop, and reports its end through
// getSignalFinished, whichever thread it ends on.
class ITestContainer : public virtual ITestableContainer {
public:
    ITestContainer() = default;
    ITestContainer(const ITestContainer&) = delete;
    ITestContainer& operator=(const ITestContainer&) = delete;
    ~ITestContainer() override;

    // Starts the test; it may return at once and end later on a thread of its own, or end before it returns.
    virtual void beginExecute() = 0;
    // Asks a running test to end early. The test still fires getSignalFinished when it is over.
    virtual void forceStopExecute() = 0;
    // Brings a finished test back to its empty state.
    virtual void clearResults() = 0;
    virtual bool isExternal() = 0;
    virtual bool isRunning() = 0;
    // A zero time point means the time is not set.
    virtual std::chrono::system_clock::time_point getStartTime() const = 0;
    virtual std::chrono::system_clock::time_point getFinishTime() const = 0;

    // The test has ended, normally or forced; the queue waits for it.
    sigc::signal<void>& getSignalFinished() { return _signalFinished; }
    // A line of progress text from the running test, emitted by the concrete test.
    sigc::signal<void, const std::string&>& getSignalStateMessage() { return _signalStateMessage; }
    sigc::signal<void, const bool&>& getSignalIsRunningChanged() { return _signalIsRunningChanged; }
    sigc::signal<void>& getSignalStartTimeChanged() { return _signalStartTimeChanged; }
    sigc::signal<void>& getSignalFinishTimeChanged() { return _signalFinishTimeChanged; }

protected:
    sigc::signal<void> _signalFinished;
    sigc::signal<void, const std::string&> _signalStateMessage;
    sigc::signal<void, const bool&> _signalIsRunningChanged;
    sigc::signal<void> _signalStartTimeChanged;
    sigc::signal<void> _signalFinishTimeChanged;
};

} // namespace ZemTree
