#include "DemoTest.h"

#include "DemoTexts.h"
#include "core/tree/NodeFactory.h"
#include "localisation/TreeRelay.h"

#include <cmath>
#include <cstdio>
#include <random>

namespace ZemTreeDemo {

namespace {

// A saved project names its tests by class.
[[maybe_unused]] const bool registered = ZemTree::NodeFactory::registerType<DemoTest>();

} // namespace

DemoTest::DemoTest() : ZemTree::TestContainer("DemoTest") {}

DemoTest::DemoTest(const std::string& id, const ZemTree::LocalString& description, double nominal,
                   double tolerancePercent, const std::string& unit, std::uint32_t seed)
    : ZemTree::TestContainer(id, description, ZemTree::LocalString::Empty()), _nominal(nominal),
      _tolerancePercent(tolerancePercent), _unit(unit), _seed(seed)
{
}

DemoTest::~DemoTest()
{
    forceStopExecute();
    _joinWorker();
}

void DemoTest::startExecute()
{
    _joinWorker();
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopRequested = false;
        _outcome = Outcome::NotRun;
    }
    _worker = std::thread([this] { _run(); });
}

void DemoTest::forceStopExecute()
{
    if (!isRunning())
        return;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopRequested = true;
    }
    _stopCondition.notify_all();
}

void DemoTest::clearResults()
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _outcome = Outcome::NotRun;
        _measured = 0.0;
    }
    ZemTree::TestContainer::clearResults();
}

DemoTest::Outcome DemoTest::getOutcome() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _outcome;
}

std::string DemoTest::getOutcomeText() const
{
    Outcome outcome;
    double measured;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        outcome = _outcome;
        measured = _measured;
    }
    std::string text = "[" + getDescription() + "] ";
    switch (outcome) {
    case Outcome::NotRun:
        return text + DemoTexts::notRun.get();
    case Outcome::Stopped:
        return text + DemoTexts::stopped.get();
    case Outcome::Passed:
        text += DemoTexts::passed.get();
        break;
    case Outcome::Failed:
        text += DemoTexts::failed.get();
        break;
    }
    char tolerance[32];
    std::snprintf(tolerance, sizeof tolerance, "%g", _tolerancePercent);
    return text + " (" + DemoTexts::measured.get() + " " + _formatValue(measured) + ", " + DemoTexts::expected.get()
           + " " + _formatValue(_nominal) + " ± " + tolerance + "%)";
}

void DemoTest::_run()
{
    // Each run draws new values, the same ones for the same seed.
    std::mt19937 generator(_seed++);
    std::uniform_int_distribution<int> delay(40, 100);
    std::uniform_real_distribution<double> deviation(-1.25 * _tolerancePercent, 1.25 * _tolerancePercent);

    _signalStateMessage.emit(std::string(DemoTexts::settingOutput.get()) + " " + _formatValue(_nominal));
    bool isCompleted = _pause(std::chrono::milliseconds(delay(generator)));
    if (isCompleted) {
        _signalStateMessage.emit(DemoTexts::waitingForRelay.get());
        isCompleted = _pause(std::chrono::milliseconds(delay(generator)));
    }

    if (isCompleted) {
        const double measured = _nominal * (1.0 + deviation(generator) / 100.0);
        const bool isOk = std::fabs(measured - _nominal) <= _nominal * _tolerancePercent / 100.0;
        {
            const std::lock_guard<std::mutex> lock(_mutex);
            _measured = measured;
            _outcome = isOk ? Outcome::Passed : Outcome::Failed;
        }
        _signalStateMessage.emit(std::string(DemoTexts::measured.get()) + " " + _formatValue(measured) + ": "
                                 + lng::TreeRelay::get(isOk ? "result_ok" : "result_notOk"));
        _pause(std::chrono::milliseconds(delay(generator)));
    }
    else {
        {
            const std::lock_guard<std::mutex> lock(_mutex);
            _outcome = Outcome::Stopped;
        }
        _signalStateMessage.emit(DemoTexts::forcedStop.get());
    }
    // The last thing this thread does with the test: the queue goes on as soon as it hears of the end.
    _finishExecute();
}

bool DemoTest::_pause(std::chrono::milliseconds duration)
{
    std::unique_lock<std::mutex> lock(_mutex);
    return !_stopCondition.wait_for(lock, duration, [this] { return _isStopRequested; });
}

void DemoTest::_joinWorker()
{
    if (_worker.joinable())
        _worker.join();
}

std::string DemoTest::_formatValue(double value) const
{
    char text[64];
    std::snprintf(text, sizeof text, "%.3f %s", value, _unit.c_str());
    return text;
}

} // namespace ZemTreeDemo
