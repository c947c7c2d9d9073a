#include "relay/RelayTestBase.h"

#include "contacts/AnalogOutputRedirectCollection.h"
#include "contacts/AnalogOutputRedirectCollectionUnit.h"
#include "contacts/AnalogOutputTarget.h"
#include "contacts/Contact.h"
#include "contacts/HardwareInContactUnit.h"
#include "contacts/HardwareOutContactUnit.h"
#include "containers/ParametersContainer.h"
#include "containers/SettingsContainer.h"
#include "core/common/XmlInclude.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/tree/IHardwareContainer.h"
#include "core/tree/IValueOut.h"
#include "relay/DemoRelay.h"
#include "relay/DemoRelayCommon.h"
#include "values/NumericUnit.h"
#include "values/Value.h"

#include <cmath>
#include <cstdlib>
#include <exception>
#include <memory>
#include <signal.h>
#include <stdexcept>

namespace ZemDemo {

namespace {

// How often a wait looks at the input it waits for; the moment it reports is the input's own stamp.
constexpr std::chrono::milliseconds PollPeriod(1);

const char* const notTestedAttribute = "NotTestedPoints";
const char* const stoppedAttribute = "Stopped";

// A test hook: with ZEMTREE_INTERRUPT_AFTER_POINTS=N in the environment the example tests interrupt their own
// process (SIGINT, as Ctrl-C does) once N points are measured in it, and wait for the stop that follows. So a
// stop lands at a known point of a run without any timing.
long interruptAfterPoints()
{
    static const long points = [] {
        const char* const text = std::getenv("ZEMTREE_INTERRUPT_AFTER_POINTS");
        return text != nullptr ? std::strtol(text, nullptr, 10) : 0L;
    }();
    return points;
}

std::atomic<long> measuredPointsInProcess{0};

// How long the hook waits for the stop it asked for.
constexpr std::chrono::milliseconds HookStopTimeout(10000);

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
        if (!isRunning()) {
            // The queue's stop came between this test and the next: the report says the run ended here.
            if (getFinishTime().time_since_epoch().count() > 0)
                _wasStoppedAfterRun = true;
            return;
        }
        _isStopRequestedFlag = true;
    }
    _stopCondition.notify_all();
}

void RelayTestBase::clearResults()
{
    _notTestedPoints = 0;
    _wasStopped = false;
    _wasStoppedAfterRun = false;
    TestContainer::clearResults();
}

void RelayTestBase::startExecute()
{
    if (_worker.joinable())
        _worker.join();
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopRequestedFlag = false;
    }
    _wasStopped = false;
    _wasStoppedAfterRun = false;
    _refusal.clear();
    _plannedPoints = _getPlannedPoints();
    _notTestedPoints = _plannedPoints;
    if (_relay != nullptr) {
        const std::vector<std::string> problems = checkSettings(_relay->getSettings());
        if (!problems.empty())
            _refusal = problems.front();
    }
    // A refused test keeps no result of an earlier run: it would speak for settings that are no longer there.
    _prepare();
    _worker = std::thread([this] { _run(); });
}

std::vector<std::string> RelayTestBase::checkSettings(const RelaySettings& relay, bool withValueErrors) const
{
    std::vector<std::string> problems;
    bool isReadable = true;
    if (getSettings() != nullptr) {
        for (ZemTree::Node* child : *getSettings()) {
            const auto* value = dynamic_cast<const ZemTree::IValueOut*>(child);
            if (value == nullptr)
                continue;
            if (const Zem::ErrorPointer& error = value->getError()) {
                if (withValueErrors)
                    problems.push_back(localText("Setting ", "Уставка ") + child->getId() + ": " + error->what());
                isReadable = false;
                continue;
            }
            const auto* number = dynamic_cast<const ZemTree::Value<double>*>(child);
            if (number != nullptr && !std::isfinite(number->getValueOut().value)) {
                problems.push_back(notFiniteText(child->getId(), number->getValueOut().value));
                isReadable = false;
            }
        }
    }
    // A contact or an output group that the test set lacks: the test would drive or listen to nothing.
    if (withValueErrors && getParameters() != nullptr) {
        for (ZemTree::Node* child : *getParameters()) {
            const auto* value = dynamic_cast<const ZemTree::IValueOut*>(child);
            if (value == nullptr || dynamic_cast<const ZemTree::IHardwareContainer*>(child) == nullptr)
                continue;
            if (const Zem::ErrorPointer& error = value->getError())
                problems.push_back(localText("Wiring ", "Подключение ") + child->getId() + ": " + error->what());
        }
    }
    // The limits of a test make sense only over numbers that are there.
    if (isReadable)
        _checkOwnSettings(relay, problems);
    return problems;
}

void RelayTestBase::_onPointMeasured()
{
    const long hook = interruptAfterPoints();
    if (hook <= 0 || measuredPointsInProcess.fetch_add(1) + 1 != hook)
        return;
    ::raise(SIGINT);
    _pause(HookStopTimeout);
}

void RelayTestBase::_setMeasuredPoints(std::size_t measured)
{
    _notTestedPoints = measured >= _plannedPoints ? 0u : static_cast<unsigned>(_plannedPoints - measured);
    if (_isStopRequested()) {
        _wasStopped = _notTestedPoints > 0;
        _wasStoppedAfterRun = _notTestedPoints == 0;
    }
}

ZemTree::TestCounters RelayTestBase::_checkCounters() const
{
    ZemTree::TestCounters counters = TestContainer::_checkCounters();
    // A result that is missing already counts once; the points it would have held are what is not tested.
    if (counters.notTestedCount == 0)
        counters.notTestedCount = _notTestedPoints.load();
    return counters;
}

void RelayTestBase::_setExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode)
{
    TestContainer::_setExtendedXml(own, mode);
    if (mode.kind != ZemTree::SerializationMode::User)
        return;
    unsigned notTested = 0;
    if (const xmlpp::Attribute* const attribute = own->get_attribute(notTestedAttribute)) {
        if (!Zem::fromText(std::string(attribute->get_value()), notTested)) {
            // A count that cannot be read must not turn a cut-short run into a complete one.
            notTested = 1;
            _onSerializationError(std::string(notTestedAttribute)
                                      + " is not a whole number: " + std::string(attribute->get_value()),
                                  mode);
        }
    }
    _notTestedPoints = notTested;
    const xmlpp::Attribute* const stopped = own->get_attribute(stoppedAttribute);
    _wasStopped = stopped != nullptr && std::string(stopped->get_value()) == "true";
    _updateState(false);
}

void RelayTestBase::_getExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) const
{
    TestContainer::_getExtendedXml(own, mode);
    if (mode.kind != ZemTree::SerializationMode::User)
        return;
    if (_notTestedPoints.load() > 0)
        own->set_attribute(notTestedAttribute, std::to_string(_notTestedPoints.load()));
    if (_wasStopped.load())
        own->set_attribute(stoppedAttribute, "true");
}

xmlpp::Element* RelayTestBase::_getDisplayXmlCurrent(ZemTree::DisplayXmlParameters& parameters,
                                                     xmlpp::Element* parent) const
{
    xmlpp::Element* const element = TestContainer::_getDisplayXmlCurrent(parameters, parent);
    if (element == nullptr)
        return element;
    if (_notTestedPoints.load() > 0)
        element->set_attribute(notTestedAttribute, std::to_string(_notTestedPoints.load()));
    if (_wasStopped.load())
        element->set_attribute(stoppedAttribute, "true");
    if (_wasStoppedAfterRun.load())
        element->set_attribute("StoppedAfter", "true");
    return element;
}

void RelayTestBase::_run()
{
    if (_relay == nullptr) {
        _report(localText("No relay under test is attached", "Испытуемое реле не подключено"));
    }
    else if (!_refusal.empty()) {
        _report(localText("Refused: ", "Отказ: ") + _refusal);
    }
    else {
        try {
            _execute(*_relay);
        }
        catch (const std::exception& error) {
            // A fault of the wiring ends this test, not the whole run.
            _report(localText("The test could not go on: ", "Проверка прервана: ") + error.what());
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

ZemTree::NumericUnit* RelayTestBase::_addSetting(const std::string& id, const ZemTree::LocalString& description,
                                                 double value, ZemTree::Measure* measure)
{
    return getSettings()->add(
        std::make_unique<ZemTree::NumericUnit>(id, description, ZemTree::LocalString::Empty(), value, measure));
}

ZemTree::NumericUnit* RelayTestBase::_addLinkedSetting(const std::string& id, const ZemTree::LocalString& description,
                                                       double value, ZemTree::Measure* measure,
                                                       const std::string& setting)
{
    ZemTree::NumericUnit* const unit = _addSetting(id, description, value, measure);
    // From the unit: its section, the test, the protection's tests, the protection.
    unit->setDefaultFormula("{../../../../Settings/" + setting + "}");
    unit->setDefaultIsFormulaSource(true);
    return unit;
}

std::string RelayTestBase::_protectionText(const std::string& id) const
{
    for (const ZemTree::Node* node = getParent(); node != nullptr; node = node->getParent()) {
        const auto* protection = dynamic_cast<const ZemTree::UniversalGeneralContainer*>(node);
        if (protection == nullptr || protection->getSettings() == nullptr)
            continue;
        for (ZemTree::Node* child : *protection->getSettings()) {
            const auto* text = dynamic_cast<const ZemTree::Value<std::string>*>(child);
            if (text != nullptr && child->getId() == id)
                return text->getError() ? std::string() : text->getValueOut().value;
        }
    }
    return {};
}

namespace {

// The unit's channel family is set as it is made, which starts it over with contact 1, and a reset copies the
// number only: the path goes straight into the value.
ZemTree::ContactUnit* wiredTo(ZemTree::ContactUnit* unit, const std::string& path)
{
    unit->setData(std::make_shared<ZemTree::Contact>(path, true));
    return unit;
}

} // namespace

ZemTree::ContactUnit* RelayTestBase::_addInputContact(const std::string& id, const ZemTree::LocalString& description,
                                                      const std::string& path)
{
    return wiredTo(getParameters()->add(std::make_unique<ZemTree::HardwareInContactUnit>(
                       id, description, ZemTree::LocalString::Empty(), nullptr)),
                   path);
}

ZemTree::ContactUnit* RelayTestBase::_addOutputContact(const std::string& id, const ZemTree::LocalString& description,
                                                       const std::string& path)
{
    return wiredTo(getParameters()->add(std::make_unique<ZemTree::HardwareOutContactUnit>(
                       id, description, ZemTree::LocalString::Empty(), nullptr)),
                   path);
}

ZemTree::AnalogOutputRedirectCollectionUnit* RelayTestBase::_addAnalogOutputs(const std::vector<std::string>& paths)
{
    auto outputs = std::make_shared<ZemTree::AnalogOutputRedirectCollection>();
    for (const std::string& path : paths)
        outputs->add(std::make_unique<ZemTree::AnalogOutputTarget>(path));
    return getParameters()->add(std::make_unique<ZemTree::AnalogOutputRedirectCollectionUnit>(
        "AnalogOutputs", ZemTree::LocalString::create("Analog outputs", "Аналоговые выходы"),
        ZemTree::LocalString::Empty(), outputs, static_cast<double>(paths.size())));
}

std::string RelayTestBase::_wiredPath(const ZemTree::ContactUnit* contact)
{
    const auto& value = contact->getValueOut().value;
    return value != nullptr ? value->getPath() : std::string();
}

std::string RelayTestBase::_wiredPath(const ZemTree::AnalogOutputRedirectCollectionUnit* outputs, std::size_t index)
{
    const auto& value = outputs->getValueOut().value;
    if (value == nullptr || index >= value->size())
        return {};
    return value->at(index)->getPath();
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
