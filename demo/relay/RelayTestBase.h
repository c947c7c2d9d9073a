#pragma once

#include "containers/TestContainer.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace ZemDevice {
class IVirtualBinaryInputChannel;
}

namespace ZemTree {
class Measure;
class NumericUnit;
}

namespace ZemDemo {

class SimulatedRelayUnderTest;

// The common ground of the example tests: a relay under test to drive, a thread of the test's own that runs
// _execute and then ends the run, and a forced stop that reaches every wait within a millisecond or two.
//
// The relay is handed over while the test is idle and must outlive every run. Each concrete test calls
// _stopAndJoin in its own destructor, so that its thread never outlives the members it works with.
class RelayTestBase : public ZemTree::TestContainer {
public:
    using Clock = std::chrono::steady_clock;

    explicit RelayTestBase(const std::string& id);
    RelayTestBase(const std::string& id, const ZemTree::LocalString& description);
    ~RelayTestBase() override;

    void setRelay(SimulatedRelayUnderTest* relay) { _relay = relay; }
    SimulatedRelayUnderTest* getRelay() const { return _relay; }

    // Asks the test's thread to end; a test that is not running ignores it.
    void forceStopExecute() override;

protected:
    // Runs on the queue's worker: reads the settings and empties the results, then starts the test's thread.
    void startExecute() override;
    // Runs on the queue's worker before the thread starts: the settings are read here, not on the thread.
    virtual void _prepare() = 0;
    // Runs on the test's own thread with a relay attached; fills the results with what it measured so far,
    // also when it is stopped.
    virtual void _execute(SimulatedRelayUnderTest& relay) = 0;

    // Runs on the test's thread. False when a stop came before `duration` was over.
    bool _pause(std::chrono::milliseconds duration);
    bool _isStopRequested() const;
    // Waits until `input` shows `state`, and returns the moment it changed to it; nothing on a time-out or stop.
    std::optional<Clock::time_point> _waitForInput(ZemDevice::IVirtualBinaryInputChannel* input, bool state,
                                                   std::chrono::milliseconds timeout);
    // A progress line for whoever watches the test.
    void _report(const std::string& line);
    void _stopAndJoin();

    // Adds a setting to the test's `Settings` section; only while the template is filled.
    ZemTree::NumericUnit* _addSetting(const std::string& id, const ZemTree::LocalString& description, double value,
                             ZemTree::Measure* measure);
    static double _settingValue(const ZemTree::NumericUnit* setting);

    // Reads the list of numbers kept in the attribute `name` with `parse`, which throws std::runtime_error for a
    // malformed one: that is reported as a problem of the reading and `numbers` stay as they were.
    void _readNumbers(xmlpp::Element* own, const char* name, std::vector<double>& numbers,
                      std::vector<double> (*parse)(const std::string&), const ZemTree::SerializationMode& mode);

private:
    void _run();

    SimulatedRelayUnderTest* _relay = nullptr;
    std::thread _worker;
    // Guards the stop flag; the condition wakes every wait of the test's thread.
    mutable std::mutex _mutex;
    std::condition_variable _stopCondition;
    bool _isStopRequestedFlag = false;
};

} // namespace ZemDemo
