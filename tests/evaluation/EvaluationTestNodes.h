#pragma once

#include "core/common/AutoResetEvent.h"
#include "core/tree/ActionUnit.h"
#include "core/tree/Unitable.h"
#include "evaluation/ITestActionContainer.h"
#include "evaluation/ITestContainer.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace ZemTreeTest {

constexpr std::chrono::milliseconds WaitTimeout{10000};

// A thread-safe log of what happened, in order, with a gate that opens on a chosen entry.
class EventLog {
public:
    void add(const std::string& entry)
    {
        {
            const std::lock_guard<std::mutex> lock(_mutex);
            _entries.push_back(entry);
        }
        if (entry == "finished")
            _gate.set();
    }
    std::vector<std::string> entries() const
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _entries;
    }
    std::size_t count(const std::string& entry) const
    {
        const std::vector<std::string> all = entries();
        return static_cast<std::size_t>(std::count(all.begin(), all.end(), entry));
    }
    // True once "finished" has been added since the last wait, false on time-out.
    bool waitGate() { return _gate.waitOne(WaitTimeout); }

private:
    mutable std::mutex _mutex;
    std::vector<std::string> _entries;
    Zem::AutoResetEvent _gate;
};

// An action unit that logs "action:before-<owner>" or "action:after-<owner>" each time it is evaluated.
inline ZemTree::ActionUnit* loggedAction(ZemTree::Node& owner, const char* id, EventLog& log)
{
    ZemTree::ActionUnit* action = owner.add(std::make_unique<ZemTree::ActionUnit>(id));
    const std::string entry =
        std::string("action:") + (id == std::string("ActionBefore") ? "before-" : "after-") + owner.getId();
    action->getSignalEvaluated().connect(
        [&log, entry](ZemTree::ActionUnit*, ZemTree::IActionEngineAPI*) { log.add(entry); });
    return action;
}

// A group that encloses tests and has actions of its own.
class FakeGroup : public ZemTree::Unitable, public virtual ZemTree::ITestActionContainer {
public:
    FakeGroup(const std::string& id, EventLog& log)
        : ZemTree::Unitable(id, id), _actionBefore(loggedAction(*this, "ActionBefore", log)),
          _actionAfter(loggedAction(*this, "ActionAfter", log))
    {
    }

    Zem::Nullable<bool> getIsEvaluated() override { return true; }
    ZemTree::ActionUnit* getActionBefore() override { return _actionBefore; }
    ZemTree::ActionUnit* getActionAfter() override { return _actionAfter; }

private:
    ZemTree::ActionUnit* const _actionBefore;
    ZemTree::ActionUnit* const _actionAfter;
};

// How a FakeTest ends once begun.
enum class FinishMode {
    // Emits its progress lines and finishes inside beginExecute.
    Synchronous,
    // Starts a thread that waits until release() or forceStopExecute(), then emits and finishes there.
    OnRelease,
};

// A test with its own before and after actions, logging "begin:<id>", "forceStop:<id>" and "end:<id>".
class FakeTest : public ZemTree::Unitable,
                 public virtual ZemTree::ITestContainer,
                 public virtual ZemTree::ITestActionContainer {
public:
    FakeTest(const std::string& id, const std::string& description, FinishMode mode, EventLog& log,
             std::vector<std::string> progress = {})
        : ZemTree::Unitable(id, description), _mode(mode), _log(log), _progress(std::move(progress)),
          _actionBefore(loggedAction(*this, "ActionBefore", log)), _actionAfter(loggedAction(*this, "ActionAfter", log))
    {
    }
    ~FakeTest() override
    {
        release();
        if (_thread.joinable())
            _thread.join();
    }

    Zem::Nullable<bool> getIsEvaluated() override { return true; }
    ZemTree::ActionUnit* getActionBefore() override { return _actionBefore; }
    ZemTree::ActionUnit* getActionAfter() override { return _actionAfter; }

    void beginExecute() override
    {
        if (_isRunning)
            throw std::logic_error("Test " + getId() + " allready running.");
        if (_thread.joinable())
            _thread.join();
        _isRunning = true;
        _log.add("begin:" + getId());
        _signalIsRunningChanged.emit(true);
        _begun.set();
        if (_mode == FinishMode::Synchronous) {
            _run();
            return;
        }
        _thread = std::thread([this] {
            _release.waitOne();
            _run();
        });
    }
    void forceStopExecute() override
    {
        _log.add("forceStop:" + getId());
        release();
    }
    void clearResults() override {}
    bool isExternal() override { return false; }
    bool isRunning() override { return _isRunning; }
    std::chrono::system_clock::time_point getStartTime() const override { return {}; }
    std::chrono::system_clock::time_point getFinishTime() const override { return {}; }

    // Lets an OnRelease test finish.
    void release() { _release.set(); }
    // True once beginExecute has run since the last wait, false on time-out.
    bool waitBegun() { return _begun.waitOne(WaitTimeout); }

private:
    void _run()
    {
        for (const std::string& line : _progress)
            _signalStateMessage.emit(line);
        _isRunning = false;
        _log.add("end:" + getId());
        _signalIsRunningChanged.emit(false);
        _signalFinished.emit();
    }

    const FinishMode _mode;
    EventLog& _log;
    const std::vector<std::string> _progress;
    ZemTree::ActionUnit* const _actionBefore;
    ZemTree::ActionUnit* const _actionAfter;
    std::atomic<bool> _isRunning{false};
    Zem::AutoResetEvent _begun;
    Zem::AutoResetEvent _release;
    std::thread _thread;
};

} // namespace ZemTreeTest
