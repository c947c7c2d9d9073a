#include "relay/RelayTestBase.h"

#include "containers/SettingsContainer.h"
#include "core/common/XmlInclude.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "values/NumericUnit.h"

#include <exception>
#include <memory>
#include <stdexcept>

namespace ZemDemo {

namespace {

// How often a wait looks at the input it waits for; the moment it reports is the input's own stamp.
constexpr std::chrono::milliseconds PollPeriod(1);

} // namespace

RelayTestBase::RelayTestBase(const std::string& id) : ZemTree::TestContainer(id) {}

RelayTestBase::RelayTestBase(const std::string& id, const ZemTree::LocalString& description)
    : ZemTree::TestContainer(id, description, ZemTree::LocalString::Empty())
{
}

RelayTestBase::~RelayTestBase()
{
    _stopAndJoin();
}

void RelayTestBase::forceStopExecute()
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (!isRunning())
            return;
        _isStopRequestedFlag = true;
    }
    _stopCondition.notify_all();
}

void RelayTestBase::startExecute()
{
    if (_worker.joinable())
        _worker.join();
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopRequestedFlag = false;
    }
    _prepare();
    _worker = std::thread([this] { _run(); });
}

void RelayTestBase::_run()
{
    if (_relay == nullptr) {
        _report("No relay under test is attached");
    }
    else {
        try {
            _execute(*_relay);
        }
        catch (const std::exception& error) {
            // A fault of the wiring ends this test, not the whole run.
            _report(std::string("The test could not go on: ") + error.what());
        }
    }
    // The last thing this thread does with the test: the queue goes on as soon as it hears of the end.
    _finishExecute();
}

bool RelayTestBase::_pause(std::chrono::milliseconds duration)
{
    std::unique_lock<std::mutex> lock(_mutex);
    return !_stopCondition.wait_for(lock, duration, [this] { return _isStopRequestedFlag; });
}

bool RelayTestBase::_isStopRequested() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _isStopRequestedFlag;
}

std::optional<RelayTestBase::Clock::time_point>
RelayTestBase::_waitForInput(ZemDevice::IVirtualBinaryInputChannel* input, bool state,
                             std::chrono::milliseconds timeout)
{
    // Polling rather than a slot: connecting to the input while the relay's thread may emit would race.
    const Clock::time_point deadline = Clock::now() + timeout;
    for (;;) {
        if (input->getState() == state)
            return input->getLastChangeTime();
        if (Clock::now() >= deadline || !_pause(PollPeriod))
            return std::nullopt;
    }
}

void RelayTestBase::_report(const std::string& line)
{
    _signalStateMessage.emit(line);
}

void RelayTestBase::_stopAndJoin()
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopRequestedFlag = true;
    }
    _stopCondition.notify_all();
    if (_worker.joinable())
        _worker.join();
}

ZemTree::NumericUnit* RelayTestBase::_addSetting(const std::string& id, const ZemTree::LocalString& description, double value,
                                        ZemTree::Measure* measure)
{
    return getSettings()->add(std::make_unique<ZemTree::NumericUnit>(id, description, ZemTree::LocalString::Empty(), value, measure));
}

double RelayTestBase::_settingValue(const ZemTree::NumericUnit* setting)
{
    return setting->getValueOut().value;
}

void RelayTestBase::_readNumbers(xmlpp::Element* own, const char* name, std::vector<double>& numbers,
                                 std::vector<double> (*parse)(const std::string&),
                                 const ZemTree::SerializationMode& mode)
{
    const xmlpp::Attribute* const attribute = own->get_attribute(name);
    if (attribute == nullptr)
        return;
    try {
        numbers = parse(attribute->get_value());
    }
    catch (const std::runtime_error& error) {
        _onSerializationError(error.what(), mode);
    }
}

} // namespace ZemDemo
