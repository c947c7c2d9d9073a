#include "relay/DemoRelayCommon.h"

#include "core/common/ConvertionHelper.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"
#include "core/tree/TreeLocalization.h"
#include "relay/DemoRelay.h"
#include "relay/RelayLogic.h"

#include <cmath>
#include <iomanip>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace ZemDemo {

namespace {

template <class T> T* findChannel(SimulatedRelayUnderTest& relay, const std::string& path)
{
    T* const channel = relay.getHardware().getVirtualChannels()->find<T>(path);
    if (channel == nullptr)
        throw std::logic_error("The test set has no " + path);
    return channel;
}

} // namespace

ZemDevice::IVirtualAnalogOutputGroup* findAnalogGroup(SimulatedRelayUnderTest& relay, const std::string& path)
{
    return findChannel<ZemDevice::IVirtualAnalogOutputGroup>(relay, path);
}

ZemDevice::IVirtualBinaryInputChannel* findInput(SimulatedRelayUnderTest& relay, const std::string& path)
{
    return findChannel<ZemDevice::IVirtualBinaryInputChannel>(relay, path);
}

ZemDevice::IVirtualBinaryOutputChannel* findOutput(SimulatedRelayUnderTest& relay, const std::string& path)
{
    return findChannel<ZemDevice::IVirtualBinaryOutputChannel>(relay, path);
}

std::vector<ZemDevice::AnalogPhasor> balanced(double amplitude)
{
    return {{amplitude, 0.0, 50.0}, {amplitude, -120.0, 50.0}, {amplitude, 120.0, 50.0}};
}

void settle(SimulatedRelayUnderTest& relay)
{
    if (!relay.getLogic().waitSettled(SettleTimeout))
        throw std::runtime_error("The relay does not answer");
}

FinishGuard::~FinishGuard()
{
    try {
        now();
    }
    catch (...) {
    }
}

void FinishGuard::now()
{
    const std::function<void()> action = std::move(_action);
    _action = nullptr;
    if (action)
        action();
}

std::string localText(const std::string& english, const std::string& russian)
{
    return lng::language == 1 ? russian : english;
}

std::string notFiniteText(const std::string& setting, double value)
{
    return notFiniteText(setting, shortNumber(value));
}

std::string notFiniteText(const std::string& setting, const std::string& text)
{
    return localText("Setting ", "Уставка ") + setting
           + localText(" is not a finite number: ", " не является конечным числом: ") + text;
}

std::string shortNumber(double value)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::setprecision(8) << value;
    return text.str();
}

std::string formatNumber(double value, int digits)
{
    // Independent of the global locale, so that a saved measurement reads back the same everywhere.
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(digits) << value;
    return text.str();
}

std::vector<double> numbersFromText(const std::string& text, const std::string& what)
{
    std::vector<double> numbers;
    std::istringstream stream(text);
    std::string item;
    while (std::getline(stream, item, ';')) {
        double value = 0.0;
        if (!Zem::fromText(item, value) || !std::isfinite(value))
            throw std::runtime_error("Not " + what + ": \"" + item + "\"");
        numbers.push_back(value);
    }
    return numbers;
}

std::string numbersToText(const std::vector<double>& numbers, int precision)
{
    std::string text;
    for (const double number : numbers)
        text += (text.empty() ? "" : ";") + Zem::convertToString<double, true>(number, precision);
    return text;
}

} // namespace ZemDemo
