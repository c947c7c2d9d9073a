#pragma once

#include "core/tree/Unitable.h"
#include "evaluation/ITestActionContainer.h"
#include "evaluation/ITestContainer.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace ZemTreeDemo {

// An example test: it "injects" a nominal value into a simulated relay, waits a little, "measures" the
// reaction with a seeded generator and judges it against a tolerance in percent. The run happens on a thread
// of its own, started by beginExecute and joined by the next start and by the destructor.
class DemoTest : public ZemTree::Unitable,
                 public virtual ZemTree::ITestContainer,
                 public virtual ZemTree::ITestActionContainer {
public:
    enum class Outcome { NotRun, Passed, Failed, Stopped };

    DemoTest(const std::string& id, const ZemTree::LocalString& description, double nominal, double tolerancePercent,
             const std::string& unit, std::uint32_t seed);
    ~DemoTest() override;

    Zem::Nullable<bool> getIsEvaluated() override { return true; }
    ZemTree::ActionUnit* getActionBefore() override { return _actionBefore; }
    ZemTree::ActionUnit* getActionAfter() override { return _actionAfter; }

    // Runs on the queue's worker; the simulated run goes on on the test's own thread.
    void beginExecute() override;
    // Cuts the simulated run short; a test that is not running ignores it.
    void forceStopExecute() override;
    void clearResults() override;
    bool isExternal() override { return false; }
    bool isRunning() override { return _isRunning; }
    std::chrono::system_clock::time_point getStartTime() const override;
    std::chrono::system_clock::time_point getFinishTime() const override;

    Outcome getOutcome() const;
    // One line for the user: the verdict with the measured and the expected value.
    std::string getOutcomeText() const;

private:
    void _run();
    // Waits up to `duration`; false when a forced stop came meanwhile.
    bool _pause(std::chrono::milliseconds duration);
    void _finishExecute();
    void _joinWorker();
    std::string _formatValue(double value) const;

    const double _nominal;
    const double _tolerancePercent;
    const std::string _unit;
    ZemTree::ActionUnit* _actionBefore = nullptr;
    ZemTree::ActionUnit* _actionAfter = nullptr;

    std::uint32_t _seed;
    std::atomic<bool> _isRunning{false};
    std::thread _worker;

    // Guards everything below: the test's thread writes it, the queue's worker and the owner read it.
    mutable std::mutex _mutex;
    std::condition_variable _stopCondition;
    bool _isStopRequested = false;
    Outcome _outcome = Outcome::NotRun;
    double _measured = 0.0;
    std::chrono::system_clock::time_point _startTime;
    std::chrono::system_clock::time_point _finishTime;
};

} // namespace ZemTreeDemo
