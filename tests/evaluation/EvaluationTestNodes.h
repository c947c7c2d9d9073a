#pragma once

#include "core/common/AutoResetEvent.h"
#include "core/tree/ActionUnit.h"
#include "core/tree/Unitable.h"
#include "evaluation/ITestActionContainer.h"
#include "evaluation/ITestContainer.h"

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
    explicit EventLog(std::string gateEntry = "finished") : _gateEntry(std::move(gateEntry)) {}

    void add(const std::string& entry)
    {
        {
            const std::lock_guard<std::mutex> lock(_mutex);
            _entries.push_back(entry);
        }
        if (entry == _gateEntry)
            _gate.set();
    }
    std::vector<std::string> entries() const
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _entries;
    }
    std::size_t count(const std::string& entry) const
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        std::size_t result = 0;
        for (const std::string& item : _entries)
            result += item == entry ? 1 : 0;
        return result;
    }
    // True once `_gateEntry` has been added since the last wait, false on time-out.
    bool waitGate() { return _gate.waitOne(WaitTimeout); }

private:
    const std::string _gateEntry;
    mutable std::mutex _mutex;
    std::vector<std::string> _entries;
    Zem::AutoResetEvent _gate;
};

// Logs an action unit as "before-<owner>" or "after-<owner>" each time it is evaluated.
inline void logActionEvaluations(ZemTree::ActionUnit* action, EventLog& log)
{
    action->getSignalEvaluated().connect([&log](ZemTree::ActionUnit* unit, ZemTree::IActionEngineAPI*) {
        const std::string kind = unit->getId() == "ActionBefore" ? "before-" : "after-";
        log.add("action:" + kind + unit->getParent()->getId());
    });
}

// A group that encloses tests and has actions of its own.
class FakeGroup : public ZemTree::Unitable, public virtual ZemTree::ITestActionContainer {
public:
    FakeGroup(const std::string& id, EventLog& log) : ZemTree::Unitable(id, id)
    {
        _actionBefore = add(std::make_unique<ZemTree::ActionUnit>("ActionBefore"));
        _actionAfter = add(std::make_unique<ZemTree::ActionUnit>("ActionAfter"));
        logActionEvaluations(_actionBefore, log);
        logActionEvaluations(_actionAfter, log);
    }

    Zem::Nullable<bool> getIsEvaluated() override { return true; }
    ZemTree::ActionUnit* getActionBefore() override { return _actionBefore; }
    ZemTree::ActionUnit* getActionAfter() override { return _actionAfter; }

private:
    ZemTree::ActionUnit* _actionBefore = nullptr;
    ZemTree::ActionUnit* _actionAfter = nullptr;
};

// How a FakeTest ends once begun.
enum class FinishMode {
    // Emits its progress lines and finishes inside beginExecute.
    Synchronous,
    // Starts a thread that waits until release() or forceStopExecute(), then emits and finishes there.
    OnRelease,
};

// A test with its own before and after actions, logging "begin:<id>" and "end:<id>".
class FakeTest : public ZemTree::Unitable,
                 public virtual ZemTree::ITestContainer,
                 public virtual ZemTree::ITestActionContainer {
public:
    FakeTest(const std::string& id, const std::string& description, FinishMode mode, EventLog& log,
             std::vector<std::string> progress = {})
        : ZemTree::Unitable(id, description), _mode(mode), _log(log), _progress(std::move(progress))
    {
        _actionBefore = add(std::make_unique<ZemTree::ActionUnit>("ActionBefore"));
        _actionAfter = add(std::make_unique<ZemTree::ActionUnit>("ActionAfter"));
        logActionEvaluations(_actionBefore, log);
        logActionEvaluations(_actionAfter, log);
    }
    ~FakeTest() override
    {
        release();
        _joinThread();
    }

    Zem::Nullable<bool> getIsEvaluated() override { return true; }
    ZemTree::ActionUnit* getActionBefore() override { return _actionBefore; }
    ZemTree::ActionUnit* getActionAfter() override { return _actionAfter; }

    void beginExecute() override
    {
        if (_isRunning)
            throw std::logic_error("Test " + getId() + " allready running.");
        _joinThread();
        _isRunning = true;
        ++_beginCount;
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
        ++_forceStopCount;
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
    int getBeginCount() const { return _beginCount; }
    int getForceStopCount() const { return _forceStopCount; }

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
    void _joinThread()
    {
        if (_thread.joinable())
            _thread.join();
    }

    const FinishMode _mode;
    EventLog& _log;
    const std::vector<std::string> _progress;
    ZemTree::ActionUnit* _actionBefore = nullptr;
    ZemTree::ActionUnit* _actionAfter = nullptr;
    std::atomic<bool> _isRunning{false};
    std::atomic<int> _beginCount{0};
    std::atomic<int> _forceStopCount{0};
    Zem::AutoResetEvent _begun;
    Zem::AutoResetEvent _release;
    std::thread _thread;
};

} // namespace ZemTreeTest
