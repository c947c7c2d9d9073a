#include "containers/TestContainer.h"

#include "containers/ResultCollectionContainer.h"
#include "core/common/DateTimeHelper.h"
#include "core/common/XmlInclude.h"
#include "results/IResultUnit.h"
#include "results/ResultBase.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace ZemTree {

namespace {

const char* const isEvaluatedAttribute = "IsEvaluated";
const char* const startTimeAttribute = "StartTimeMs";
const char* const finishTimeAttribute = "FinishTimeMs";
const std::int64_t nanosecondsPerMillisecond = 1000000;

static_assert(std::is_same<TestContainer::TimePoint::duration, std::chrono::nanoseconds>::value,
              "the saved times count nanoseconds of the system clock");

// A whole decimal number of milliseconds that fits the clock; anything else is no time.
bool tryReadMilliseconds(const std::string& text, TestContainer::TimePoint::rep& nanoseconds)
{
    if (text.empty())
        return false;
    std::size_t used = 0;
    long long value = 0;
    try {
        value = std::stoll(text, &used, 10);
    }
    catch (const std::exception&) {
        return false;
    }
    if (used != text.size())
        return false;
    const long long limit = std::numeric_limits<std::int64_t>::max() / nanosecondsPerMillisecond;
    if (value > limit || value < -limit)
        return false;
    nanoseconds = static_cast<TestContainer::TimePoint::rep>(value * nanosecondsPerMillisecond);
    return true;
}

} // namespace

TestContainer::TestContainer() : TestContainer("TestContainer") {}

TestContainer::TestContainer(const std::string& id) : TestContainer(id, LocalString::Empty(), LocalString::Empty()) {}

TestContainer::TestContainer(const std::string& id, const LocalString& description, const LocalString& secondText)
    : UniversalGeneralContainer(id, description, secondText)
{
    _initHierarchicalMode(ContainerHierarchicalMode::Parameters);
}

void TestContainer::beginExecute()
{
    if (_isRunning.load())
        throw std::logic_error("Test " + getId() + " allready running.");
    _isRunning.store(true);
    _setStartTime(std::chrono::system_clock::now());
    _setFinishTime(TimePoint());
    _signalIsRunningChanged.emit(true);
    startExecute();
}

void TestContainer::_finishExecute()
{
    if (!_isRunning.load())
        return;
    _setFinishTime(std::chrono::system_clock::now());
    _isRunning.store(false);
    _updateState(false);
    _signalIsRunningChanged.emit(false);
    _signalFinished.emit();
}

void TestContainer::clearResults()
{
    // A copy: a result unit's slots may reach back into the section.
    std::vector<Node*> results;
    for (Node* child : *_results)
        results.push_back(child);
    for (Node* child : results) {
        if (auto* unit = dynamic_cast<IResultUnit*>(child))
            unit->clearResult();
    }
    _setStartTime(TimePoint());
    _setFinishTime(TimePoint());
    _updateState(false);
}

void TestContainer::_setStartTime(TimePoint time)
{
    const TimePoint::rep value = time.time_since_epoch().count();
    if (_startTime.exchange(value) == value)
        return;
    _signalStartTimeChanged.emit();
}

void TestContainer::_setFinishTime(TimePoint time)
{
    const TimePoint::rep value = time.time_since_epoch().count();
    if (_finishTime.exchange(value) == value)
        return;
    _signalFinishTimeChanged.emit();
}

void TestContainer::_setIsEvaluatedObject(bool isEvaluated)
{
    _isEvaluatedObject = isEvaluated;
}

Zem::Nullable<bool> TestContainer::_checkIsEvaluatedObject() const
{
    return _isEvaluatedObject;
}

TestCounters TestContainer::_checkCounters() const
{
    TestCounters counters;
    if (_results == nullptr)
        return counters;
    for (Node* child : *_results) {
        auto* unit = dynamic_cast<IResultUnit*>(child);
        if (unit == nullptr)
            continue;
        const ResultBase* const result = unit->getResultValue();
        if (result == nullptr || result->getState() == ResultState::Empty)
            ++counters.notTestedCount;
        else if (result->getState() == ResultState::Ok)
            ++counters.okCount;
        else
            ++counters.failedCount;
    }
    return counters;
}

void TestContainer::_fillTemplate()
{
    UniversalGeneralContainer::_fillTemplate();
    _results = add(std::make_unique<ResultCollectionContainer>("Results"));
}

void TestContainer::_onTemplateFilled()
{
    UniversalGeneralContainer::_onTemplateFilled();
    _results->lockContainer();
}

void TestContainer::_setExtendedXml(xmlpp::Element* own, const SerializationMode& mode)
{
    UniversalGeneralContainer::_setExtendedXml(own, mode);
    if (mode.kind != SerializationMode::User)
        return;
    if (const xmlpp::Attribute* attribute = own->get_attribute(isEvaluatedAttribute)) {
        const std::string text = attribute->get_value();
        if (text == "true" || text == "1" || text == "True")
            setIsEvaluated(true);
        else if (text == "false" || text == "0" || text == "False")
            setIsEvaluated(false);
    }
    TimePoint::rep nanoseconds = 0;
    if (const xmlpp::Attribute* attribute = own->get_attribute(startTimeAttribute)) {
        if (tryReadMilliseconds(attribute->get_value(), nanoseconds))
            _startTime.store(nanoseconds);
    }
    if (const xmlpp::Attribute* attribute = own->get_attribute(finishTimeAttribute)) {
        if (tryReadMilliseconds(attribute->get_value(), nanoseconds))
            _finishTime.store(nanoseconds);
    }
}

void TestContainer::_getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    UniversalGeneralContainer::_getExtendedXml(own, mode);
    if (mode.kind != SerializationMode::User)
        return;
    own->set_attribute(isEvaluatedAttribute, _isEvaluatedObject ? "true" : "false");
    const TimePoint::rep start = _startTime.load();
    if (start > 0)
        own->set_attribute(startTimeAttribute, std::to_string(start / nanosecondsPerMillisecond));
    const TimePoint::rep finish = _finishTime.load();
    if (finish > 0)
        own->set_attribute(finishTimeAttribute, std::to_string(finish / nanosecondsPerMillisecond));
}

xmlpp::Element* TestContainer::_getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const
{
    xmlpp::Element* const element = Unitable::_getDisplayXmlCurrent(parameters, parent);
    const TimePoint start = getStartTime();
    const TimePoint finish = getFinishTime();
    if (element == nullptr || start.time_since_epoch().count() < 1 || finish.time_since_epoch().count() < 1)
        return element;
    element->set_attribute("StartDate", Zem::DateTimeHelper::getDisplayTimeString(start, "%d.%m.%Y"));
    element->set_attribute("StartTime", Zem::DateTimeHelper::getDisplayTimeString(start, "%H:%M:%S"));
    element->set_attribute("EndDate", Zem::DateTimeHelper::getDisplayTimeString(finish, "%d.%m.%Y"));
    element->set_attribute("EndTime", Zem::DateTimeHelper::getDisplayTimeString(finish, "%H:%M:%S"));
    element->set_attribute("ElapsedTime",
                           Zem::DateTimeHelper::getDisplayDurationString(start, finish, "%02d:%02d:%02d"));
    return element;
}

} // namespace ZemTree
