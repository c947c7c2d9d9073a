#pragma once

#include "containers/TestContainer.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace ZemTreeDemo {

// An example test: it "injects" a nominal value into a simulated relay, waits a little, "measures" the
// reaction with a seeded generator and judges it against a tolerance in percent. The run happens on a thread
// of its own, started by startExecute and joined by the next start and by the destructor; the test container
// keeps the running state and the times.
class DemoTest : public ZemTree::TestContainer {
public:
    enum class Outcome { NotRun, Passed, Failed, Stopped };

    DemoTest();
    DemoTest(const std::string& id, const ZemTree::LocalString& description, double nominal, double tolerancePercent,
             const std::string& unit, std::uint32_t seed);
    ~DemoTest() override;

    // Cuts the simulated run short; a test that is not running ignores it.
    void forceStopExecute() override;
    void clearResults() override;

    Outcome getOutcome() const;
    // One line for the user: the verdict with the measured and the expected value.
    std::string getOutcomeText() const;

protected:
    // Runs on the queue's worker; the simulated run goes on on the test's own thread.
    void startExecute() override;

private:
    void _run();
    // Waits up to `duration`; false when a forced stop came meanwhile.
    bool _pause(std::chrono::milliseconds duration);
    void _joinWorker();
    std::string _formatValue(double value) const;

    double _nominal = 1.0;
    double _tolerancePercent = 5.0;
    std::string _unit = "A";

    std::uint32_t _seed = 0;
    std::thread _worker;

    // Guards everything below: the test's thread writes it, the queue's worker and the owner read it.
    mutable std::mutex _mutex;
    std::condition_variable _stopCondition;
    bool _isStopRequested = false;
    Outcome _outcome = Outcome::NotRun;
    double _measured = 0.0;
};

} // namespace ZemTreeDemo
