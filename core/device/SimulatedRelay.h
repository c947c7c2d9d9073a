#pragma once

#include <sigc++/connection.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace ZemDevice {

class HardwareManager;
class HardwareVirtualChannels;
class IVirtualBinaryInputChannel;

// A relay under test in software, wired to a simulated test set: it watches the analog and binary outputs and
// answers on binary inputs after its operate times, from a thread of its own, so that a test has something real
// to drive and to time.
//
// Each rule ties a condition on outputs of the test set to one binary input: when the condition becomes true the
// input closes `onDelay` after the change that caused it, and when it becomes false the input opens `offDelay`
// after that change. A condition that returns to its committed value before its due time cancels the pending
// change. The delays count from the moment the output changed, so the input's change time minus the output's is
// never shorter than the delay.
//
// Threads: the slots that watch the outputs run on the thread that changes them and only note the change; the
// inputs are driven on the relay's worker thread, named "ZemDevice_Relay", whose input signals therefore fire
// there. Rules are added, and the relay is destroyed, while no other thread changes the test set. The hardware
// manager outlives the relay.
class SimulatedRelay {
public:
    explicit SimulatedRelay(HardwareManager& hardware);
    // Stops and joins the worker; pending changes are dropped.
    ~SimulatedRelay();
    SimulatedRelay(const SimulatedRelay&) = delete;
    SimulatedRelay& operator=(const SimulatedRelay&) = delete;

    // A protection stage: closes `tripInputPath` `operateTime` after the amplitude of phasor `channel` (0-based) of
    // the analog group at `analogGroupPath` reaches `pickup`, and opens it as soon as the amplitude falls below.
    // Paths are relative to the virtual channels, e.g. "AnalogOutputs/Group 1" and "BinaryInputs/Group 1/Input 1".
    // Throws std::logic_error, adding nothing, when a path names no such group or input or the channel is behind
    // the group.
    void addStage(const std::string& analogGroupPath, std::size_t channel, double pickup,
                  std::chrono::milliseconds operateTime, const std::string& tripInputPath);

    // A contact that follows a binary output of the test set onto a binary input, `delay` later both ways.
    // Throws std::logic_error, adding nothing, when a path names no such output or input.
    void addFollower(const std::string& outputPath, const std::string& inputPath, std::chrono::milliseconds delay);

private:
    using Clock = std::chrono::steady_clock;

    struct Pending {
        Clock::time_point due;
        bool state;
    };

    struct Rule {
        IVirtualBinaryInputChannel* input = nullptr;
        // Reads the condition from the outputs; safe from any thread.
        std::function<bool()> isActive;
        std::chrono::milliseconds onDelay{0};
        std::chrono::milliseconds offDelay{0};
        // The state this rule last drove, or found on the input when it was added.
        bool committed = false;
        std::optional<Pending> pending;
    };

    Rule* _addRule(std::unique_ptr<Rule> rule);
    // Runs on the thread that changed an output.
    void _onSourceChanged(Rule* rule, Clock::time_point changed);
    // The worker: waits for the earliest due change and drives it.
    void _run();

    HardwareVirtualChannels* _channels;
    std::mutex _mutex;
    std::condition_variable _condition;
    bool _isStopping = false;
    std::vector<std::unique_ptr<Rule>> _rules;
    std::vector<sigc::connection> _connections;
    std::thread _worker;
};

} // namespace ZemDevice
