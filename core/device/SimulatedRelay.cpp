#include "core/device/SimulatedRelay.h"

#include "core/common/ThreadHelper.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"

#include <cmath>
#include <stdexcept>

namespace ZemDevice {

SimulatedRelay::SimulatedRelay(HardwareManager& hardware) : _channels(hardware.getVirtualChannels())
{
    _worker = std::thread([this] {
        Zem::ThreadHelper::setCurrentThreadName("ZemDevice_Relay");
        _run();
    });
}

SimulatedRelay::~SimulatedRelay()
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopping = true;
    }
    _condition.notify_all();
    _worker.join();
    for (sigc::connection& connection : _connections)
        connection.disconnect();
}

void SimulatedRelay::addStage(const std::string& analogGroupPath, std::size_t channel, double pickup,
                              std::chrono::milliseconds operateTime, const std::string& tripInputPath)
{
    auto* group = _channels->find<IVirtualAnalogOutputGroup>(analogGroupPath);
    if (group == nullptr)
        throw std::logic_error("No analog output group at '" + analogGroupPath + "'");
    if (channel >= group->getChannelCount())
        throw std::logic_error("The analog output group '" + analogGroupPath + "' has no channel "
                               + std::to_string(channel));
    auto* input = _channels->find<IVirtualBinaryInputChannel>(tripInputPath);
    if (input == nullptr)
        throw std::logic_error("No binary input at '" + tripInputPath + "'");

    auto rule = std::make_unique<Rule>();
    rule->input = input;
    // A NaN amplitude never reaches the pickup.
    rule->isActive = [group, channel, pickup] { return std::fabs(group->getPhasor(channel).amplitude) >= pickup; };
    rule->onDelay = operateTime;
    Rule* added = _addRule(std::move(rule));
    _connections.push_back(group->getSignalChanged().connect(
        [this, added](Clock::time_point changed) { _onSourceChanged(added, changed); }));
}

void SimulatedRelay::addFollower(const std::string& outputPath, const std::string& inputPath,
                                 std::chrono::milliseconds delay)
{
    auto* output = _channels->find<IVirtualBinaryOutputChannel>(outputPath);
    if (output == nullptr)
        throw std::logic_error("No binary output at '" + outputPath + "'");
    auto* input = _channels->find<IVirtualBinaryInputChannel>(inputPath);
    if (input == nullptr)
        throw std::logic_error("No binary input at '" + inputPath + "'");

    auto rule = std::make_unique<Rule>();
    rule->input = input;
    rule->isActive = [output] { return output->getState(); };
    rule->onDelay = delay;
    rule->offDelay = delay;
    Rule* added = _addRule(std::move(rule));
    _connections.push_back(output->getSignalStateChanged().connect(
        [this, added](bool, Clock::time_point changed) { _onSourceChanged(added, changed); }));
}

SimulatedRelay::Rule* SimulatedRelay::_addRule(std::unique_ptr<Rule> rule)
{
    rule->committed = rule->input->getState();
    Rule* added = rule.get();
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _rules.push_back(std::move(rule));
    }
    // A condition that already holds counts from now.
    _onSourceChanged(added, Clock::now());
    return added;
}

void SimulatedRelay::_onSourceChanged(Rule* rule, Clock::time_point changed)
{
    // Read before taking our lock: the source has a lock of its own.
    const bool active = rule->isActive();
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (rule->pending ? rule->pending->state == active : rule->committed == active)
            return;
        if (rule->committed == active)
            rule->pending.reset();
        else
            rule->pending = Pending{changed + (active ? rule->onDelay : rule->offDelay), active};
    }
    _condition.notify_all();
}

void SimulatedRelay::_run()
{
    std::unique_lock<std::mutex> lock(_mutex);
    while (!_isStopping) {
        Rule* next = nullptr;
        for (const std::unique_ptr<Rule>& rule : _rules) {
            if (rule->pending && (next == nullptr || rule->pending->due < next->pending->due))
                next = rule.get();
        }
        if (next == nullptr) {
            _condition.wait(lock);
            continue;
        }
        // Woken early by a new change or a spurious wake-up, the search starts again.
        if (Clock::now() < next->pending->due) {
            _condition.wait_until(lock, next->pending->due);
            continue;
        }
        const bool state = next->pending->state;
        next->committed = state;
        next->pending.reset();
        IVirtualBinaryInputChannel* input = next->input;
        // The input's slots run without our lock, so they may read the relay's hardware again.
        lock.unlock();
        input->drive(state);
        lock.lock();
    }
}

} // namespace ZemDevice
