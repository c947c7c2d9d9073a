#pragma once

#include "containers/TestContainer.h"

#include <atomic>
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
class AnalogOutputRedirectCollectionUnit;
class ContactUnit;
class Measure;
class NumericUnit;
} // namespace ZemTree

namespace ZemDemo {

class SimulatedRelayUnderTest;
struct RelaySettings;

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
    // Also forgets the points an earlier run left unmeasured: with no result at all there is nothing to complete.
    void clearResults() override;

    // What keeps the test from running with its present settings, one line per fault naming the setting and its
    // limit: a value in error, a number that is not finite, a ramp with too many steps, a wait too long. The same
    // checks run when the test starts; a test with any of them refuses to drive the hardware.
    // Without `withValueErrors` a setting in error stops the checks without a line of its own.
    std::vector<std::string> checkSettings(const RelaySettings& relay, bool withValueErrors = true) const;

    // How many of the points the last run meant to measure it did not measure (stopped, refused or cut short);
    // they count as not tested, so such a test is never passed.
    unsigned getNotTestedPoints() const { return _notTestedPoints.load(); }
    // True when the last run was cut short by a stop.
    bool wasStopped() const { return _wasStopped.load(); }
    // True when a stop of the run reached this test after it had measured every point: the run ended here, but
    // nothing of this test is missing.
    bool wasStoppedAfterRun() const { return _wasStoppedAfterRun.load(); }

protected:
    // Runs on the queue's worker: reads the settings and empties the results, then starts the test's thread.
    void startExecute() override;
    // Runs on the queue's worker before the thread starts: the settings are read here, not on the thread.
    virtual void _prepare() = 0;
    // Runs on the test's own thread with a relay attached; fills the results with what it measured so far,
    // also when it is stopped.
    virtual void _execute(SimulatedRelayUnderTest& relay) = 0;

    // Adds the checks of the concrete test to `problems`; the common ones (errors, finite numbers) are done.
    virtual void _checkOwnSettings(const RelaySettings& relay, std::vector<std::string>& problems) const = 0;
    // The number of points a run with the present settings measures.
    virtual unsigned _getPlannedPoints() const = 0;
    // Runs on the test's thread when it has measured one more point; a run may be interrupted here on purpose.
    void _onPointMeasured();
    // Runs on the test's thread as the measuring ends, before the results are set.
    void _setMeasuredPoints(std::size_t measured);

    // Not-tested points of a cut-short run are carried as incomplete.
    ZemTree::TestCounters _checkCounters() const override;
    void _setExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) const override;
    xmlpp::Element* _getDisplayXmlCurrent(ZemTree::DisplayXmlParameters& parameters,
                                          xmlpp::Element* parent) const override;

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
    // A setting whose default is a formula over the test object: `setting` is a path below the protection's
    // `Settings`, so the setting follows the relay's own value of the protection that holds the test.
    ZemTree::NumericUnit* _addLinkedSetting(const std::string& id, const ZemTree::LocalString& description,
                                            double value, ZemTree::Measure* measure, const std::string& setting);
    static double _settingValue(const ZemTree::NumericUnit* setting);

    // The wiring of a test, in its `Parameters`: a contact on a binary input or output of the test set, and the
    // analog output groups the test drives, each bound by a path below the test set's virtual channels. Only
    // while the template is filled.
    ZemTree::ContactUnit* _addInputContact(const std::string& id, const ZemTree::LocalString& description,
                                           const std::string& path);
    ZemTree::ContactUnit* _addOutputContact(const std::string& id, const ZemTree::LocalString& description,
                                            const std::string& path);
    ZemTree::AnalogOutputRedirectCollectionUnit* _addAnalogOutputs(const std::vector<std::string>& paths);
    // The path a contact's value names now, empty when it names none; read while the test is idle.
    static std::string _wiredPath(const ZemTree::ContactUnit* contact);
    // The path of the `index`-th analog output group the test drives, empty when there is none.
    static std::string _wiredPath(const ZemTree::AnalogOutputRedirectCollectionUnit* outputs, std::size_t index);
    // The text of the protection setting `id` above the test, such as the overcurrent curve; empty when no
    // protection above holds it free of errors.
    std::string _protectionText(const std::string& id) const;

    // Reads the list of numbers kept in the attribute `name` with `parse`, which throws std::runtime_error for a
    // malformed one: that is reported as a problem of the reading and `numbers` stay as they were.
    void _readNumbers(xmlpp::Element* own, const char* name, std::vector<double>& numbers,
                      std::vector<double> (*parse)(const std::string&), const ZemTree::SerializationMode& mode);

private:
    void _run();

    SimulatedRelayUnderTest* _relay = nullptr;
    // Why the test refuses the present run; empty when it runs.
    std::string _refusal;
    unsigned _plannedPoints = 0;
    std::atomic<unsigned> _notTestedPoints{0};
    std::atomic<bool> _wasStopped{false};
    std::atomic<bool> _wasStoppedAfterRun{false};
    std::thread _worker;
    // Guards the stop flag; the condition wakes every wait of the test's thread.
    mutable std::mutex _mutex;
    std::condition_variable _stopCondition;
    bool _isStopRequestedFlag = false;
};

} // namespace ZemDemo
