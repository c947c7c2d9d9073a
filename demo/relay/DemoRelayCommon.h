#pragma once

#include "core/device/AnalogPhasor.h"

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace ZemDevice {
class IVirtualAnalogOutputGroup;
class IVirtualBinaryInputChannel;
class IVirtualBinaryOutputChannel;
} // namespace ZemDevice

namespace ZemDemo {

class SimulatedRelayUnderTest;

// How long a test waits for the relay to look at a change before it gives up on it.
constexpr std::chrono::milliseconds SettleTimeout(2000);

// The channels of the relay's test set by path; throws std::logic_error when the test set has no such channel.
ZemDevice::IVirtualAnalogOutputGroup* findAnalogGroup(SimulatedRelayUnderTest& relay, const std::string& path);
ZemDevice::IVirtualBinaryInputChannel* findInput(SimulatedRelayUnderTest& relay, const std::string& path);
ZemDevice::IVirtualBinaryOutputChannel* findOutput(SimulatedRelayUnderTest& relay, const std::string& path);

// A balanced three-phase set of `amplitude` at 50 Hz, phase A at 0°.
std::vector<ZemDevice::AnalogPhasor> balanced(double amplitude);

// Waits for the relay to settle; throws std::runtime_error when it does not answer.
void settle(SimulatedRelayUnderTest& relay);

// Runs its action once: at now(), or when the scope ends without it, as on an exception. A test keeps what it
// measured and switches its outputs off that way whatever ends its measuring. On the way out of an exception a
// failure of the action itself is dropped: the first fault is the one the test reports.
class FinishGuard {
public:
    explicit FinishGuard(std::function<void()> action) : _action(std::move(action)) {}
    FinishGuard(const FinishGuard&) = delete;
    FinishGuard& operator=(const FinishGuard&) = delete;
    ~FinishGuard();

    void now();

private:
    std::function<void()> _action;
};

// The text of the user's language (lng::language) of the two; progress lines and refusals speak it.
std::string localText(const std::string& english, const std::string& russian);

// The one refusal of a setting that is no finite number, whether it came from data or from a formula.
std::string notFiniteText(const std::string& setting, double value);
std::string notFiniteText(const std::string& setting, const std::string& text);

// A number in refusals: as short as it can be and still exact enough to recognise ("1e-09", "7000000").
std::string shortNumber(double value);

// A number for progress lines and measured values, with `digits` after the point.
std::string formatNumber(double value, int digits);

// A list of numbers as a test keeps it in an attribute, "2;3;5". Reading throws std::runtime_error naming `what`
// for an item that is no finite number.
std::vector<double> numbersFromText(const std::string& text, const std::string& what);
std::string numbersToText(const std::vector<double>& numbers, int precision);

} // namespace ZemDemo
