#pragma once

#include "containers/UniversalGeneralContainer.h"
#include "evaluation/ITestContainer.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>

namespace ZemTree {

class ResultCollectionContainer;

// One executable test: an item with a `Results` section, a running state and the times of its last run.
// Concrete tests override startExecute, do their work there or on threads of their own, and call
// _finishExecute when they are through, however the run ended.
//
// The queue begins a test on its worker; the test ends on whatever thread finishes it. The running flag and
// the times are atomics, so that the GUI thread may read them during a run.
class TestContainer : public UniversalGeneralContainer, public virtual ITestContainer {
public:
    using TimePoint = std::chrono::system_clock::time_point;

    TestContainer();
    explicit TestContainer(const std::string& id);
    TestContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    bool hasFixedHierarchicalMode() const override { return true; }

    // Runs on the queue's worker: marks the test running, stamps the start and clears the finish time, then
    // calls startExecute. A running test refuses with std::logic_error and stays as it is.
    void beginExecute() override;
    // Empty here: a concrete test ends its run early and still calls _finishExecute.
    void forceStopExecute() override {}
    // Empties every result unit and both times, and publishes the counters up the tree. The choice of the
    // test stays as it is.
    void clearResults() override;
    bool isExternal() override { return false; }
    bool isRunning() override { return _isRunning.load(); }
    TimePoint getStartTime() const override { return TimePoint(TimePoint::duration(_startTime.load())); }
    TimePoint getFinishTime() const override { return TimePoint(TimePoint::duration(_finishTime.load())); }

    ResultCollectionContainer* getResults() const { return _results; }

protected:
    // The concrete test's work; may return at once. Empty here.
    virtual void startExecute() {}
    // Ends a run: stamps the finish time, publishes the counters up the tree and tells the queue. May run on
    // any thread; a second call, or one on an idle test, does nothing.
    void _finishExecute();
    // Compare first; on a change store and emit the time's signal.
    void _setStartTime(TimePoint time);
    void _setFinishTime(TimePoint time);

    void _setIsEvaluatedObject(bool isEvaluated) override;
    Zem::Nullable<bool> _checkIsEvaluatedObject() const override;
    // Counts the result units: no result or a not tested one is not tested, a good one is ok, any other fails.
    TestCounters _checkCounters() const override;

    void _fillTemplate() override;
    void _onTemplateFilled() override;

    // A project carries `IsEvaluated` and the times of the last run in milliseconds.
    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override;
    // The report of a finished run carries its dates, times and duration; a test has no `Mode` in the report.
    xmlpp::Element* _getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const override;
    std::string _getDisplayXmlCurrentDataType() const override { return "TestContainer"; }

private:
    ResultCollectionContainer* _results = nullptr;
    bool _isEvaluatedObject = false;
    std::atomic<bool> _isRunning{false};
    // Nanoseconds since the clock's epoch; zero means not set.
    std::atomic<TimePoint::rep> _startTime{0};
    std::atomic<TimePoint::rep> _finishTime{0};
};

} // namespace ZemTree
