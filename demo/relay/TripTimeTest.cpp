#include "relay/TripTimeTest.h"

#include "containers/ResultCollectionContainer.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/tree/Measures.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/Tolerance.h"
#include "core/tree/ToleranceItem.h"
#include "relay/DemoRelay.h"
#include "relay/DemoRelayCommon.h"
#include "relay/RelayLogic.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/ResultMultiGraph.h"
#include "values/NumericUnit.h"

#include <cmath>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace ZemDemo {

namespace {

const char* const multiplesAttribute = "Multiples";

void checkMultiples(const std::vector<double>& multiples)
{
    if (multiples.empty())
        throw std::logic_error("A trip time test needs at least one multiple of the pickup");
    for (const double multiple : multiples) {
        if (!(multiple > 1.0) || !std::isfinite(multiple))
            throw std::logic_error("A multiple of the pickup must be above 1");
    }
}

} // namespace

TripTimeTest::TripTimeTest() : RelayTestBase("TripTimeTest") {}

TripTimeTest::TripTimeTest(const std::string& id, const ZemTree::LocalString& description)
    : RelayTestBase(id, description)
{
}

TripTimeTest::~TripTimeTest()
{
    _stopAndJoin();
}

void TripTimeTest::setMultiples(const std::vector<double>& multiples)
{
    checkMultiples(multiples);
    _multiples = multiples;
}

std::string TripTimeTest::multiplesToText(const std::vector<double>& multiples)
{
    return numbersToText(multiples, 3);
}

std::vector<double> TripTimeTest::multiplesFromText(const std::string& text)
{
    std::vector<double> multiples = numbersFromText(text, "a multiple of the pickup");
    try {
        checkMultiples(multiples);
    }
    catch (const std::logic_error& error) {
        throw std::runtime_error(std::string(error.what()) + ": \"" + text + "\"");
    }
    return multiples;
}

void TripTimeTest::_fillTemplate()
{
    RelayTestBase::_fillTemplate();
    _trip = _addInputContact("TripContact", ZemTree::LocalString::create("Trip contact", "Контакт отключения"),
                             RelayLogic::TripInputPath);
    _outputs = _addAnalogOutputs({RelayLogic::CurrentGroupPath});
    _tolerance = _addSetting("Tolerance", ZemTree::LocalString::create("Relative tolerance", "Допуск"), 5.0,
                             ZemTree::Measures::Percent());
    _absoluteTolerance =
        _addSetting("AbsoluteTolerance", ZemTree::LocalString::create("Absolute tolerance", "Абсолютный допуск"), 0.04,
                    ZemTree::Measures::Second());
    _pickup = _addLinkedSetting("Pickup", ZemTree::LocalString::create("Pickup setting", "Уставка срабатывания"), 1.0,
                                ZemTree::Measures::Ampere(), "Pickup");
    _timeMultiplier =
        _addLinkedSetting("TimeMultiplier", ZemTree::LocalString::create("Time multiplier", "Множитель времени"), 0.1,
                          ZemTree::Measures::None(), "TimeMultiplier");
    _tripTimeResult = getResults()->add(std::make_unique<ZemTree::ResultMultiGraphUnit>(
        "TripTime", ZemTree::LocalString::create("Trip time", "Время срабатывания"), ZemTree::LocalString::Empty(),
        nullptr));
}

void TripTimeTest::_prepare()
{
    _runTripPath = _wiredPath(_trip);
    _runCurrentsPath = _wiredPath(_outputs, 0);
    _runMultiples = _multiples;
    _runTolerance = _settingValue(_tolerance);
    _runAbsoluteTolerance = _settingValue(_absoluteTolerance);
    _runPickup = _settingValue(_pickup);
    _runTimeMultiplier = _settingValue(_timeMultiplier);
    _runCurve = _protectionText("Curve");
    _tripTimeResult->clearResult();
}

void TripTimeTest::_checkOwnSettings(const RelaySettings&, std::vector<std::string>& problems) const
{
    const std::string curve = _protectionText("Curve");
    if (curve.empty()) {
        problems.push_back(localText("No overcurrent protection above the test gives its curve",
                                     "Над проверкой нет МТЗ с характеристикой"));
        return;
    }
    const double pickup = _settingValue(_pickup);
    const double timeMultiplier = _settingValue(_timeMultiplier);
    if (!(pickup > 0.0) || !(timeMultiplier > 0.0)) {
        problems.push_back(localText("Settings Pickup and TimeMultiplier must be above 0, not ",
                                     "Уставки Pickup и TimeMultiplier должны быть больше 0, а не ")
                           + shortNumber(pickup) + localText(" and ", " и ") + shortNumber(timeMultiplier));
        return;
    }
    const double tolerance = _settingValue(_tolerance);
    const double absoluteTolerance = _settingValue(_absoluteTolerance);
    if (!(tolerance >= 0.0 && tolerance <= 100.0))
        problems.push_back(localText("Setting Tolerance is ", "Уставка Tolerance равна ") + shortNumber(tolerance)
                           + localText(" %; the limits are 0 to 100 %", " %; допустимо от 0 до 100 %"));
    if (!(absoluteTolerance >= 0.0 && absoluteTolerance <= MaxExpectedTime))
        problems.push_back(localText("Setting AbsoluteTolerance is ", "Уставка AbsoluteTolerance равна ")
                           + shortNumber(absoluteTolerance)
                           + localText(" s; the limits are 0 to ", " с; допустимо от 0 до ")
                           + shortNumber(MaxExpectedTime) + localText(" s", " с"));
    for (const double multiple : _multiples) {
        const double expected = RelayLogic::curveTime(curve, multiple, timeMultiplier);
        if (!(expected <= MaxExpectedTime))
            problems.push_back(localText("Setting Multiples: ", "Уставка Multiples: ") + shortNumber(multiple)
                               + localText(" x pickup expects a trip after ", " x пуск ждёт срабатывания через ")
                               + shortNumber(expected) + localText(" s; the limit is ", " с; предел ")
                               + shortNumber(MaxExpectedTime) + localText(" s", " с"));
    }
}

void TripTimeTest::_execute(SimulatedRelayUnderTest& relay)
{
    ZemDevice::IVirtualAnalogOutputGroup* const currents = findAnalogGroup(relay, _runCurrentsPath);
    ZemDevice::IVirtualBinaryInputChannel* const trip = findInput(relay, _runTripPath);
    const RelaySettings& settings = relay.getSettings();

    std::vector<Zem::Point> points;
    // What was measured is kept and the outputs are switched off however the measuring ends, also when the
    // relay stops answering halfway.
    FinishGuard finish([&] {
        currents->setPhasors(balanced(0.0));
        _setMeasuredPoints(points.size());
        if (points.empty())
            return;
        auto tolerance = std::make_shared<ZemTree::Tolerance>();
        tolerance->add(std::make_unique<ZemTree::ToleranceItem>(
            ZemTree::RangeStructure::Standart(0, 1e6),
            Zem::Nullable<ZemTree::RangeStructure>(ZemTree::RangeStructure::Standart(-_runTolerance, _runTolerance)),
            Zem::Nullable<ZemTree::RangeStructure>(
                ZemTree::RangeStructure::Standart(-_runAbsoluteTolerance, _runAbsoluteTolerance))));
        auto manager = std::make_shared<ZemTree::GraphTimeManager>(localText("Current", "Ток"),
                                                                   ZemTree::Measures::Ampere(), tolerance);
        manager->setFormula(RelayLogic::curveFormula(_runCurve));
        manager->setIOperate(_runPickup);
        manager->setTOperate(_runTimeMultiplier);
        // The band the relay is meant to hit, drawn from just above the pickup to twenty times it.
        std::vector<Zem::PointF> up;
        std::vector<Zem::PointF> down;
        for (double multiple = 1.2; multiple <= 20.0; multiple *= 1.15) {
            const double time = RelayLogic::curveTime(_runCurve, multiple, _runTimeMultiplier);
            const double band = std::max(time * _runTolerance / 100.0, _runAbsoluteTolerance);
            const auto x = static_cast<float>(multiple * _runPickup);
            up.push_back({x, static_cast<float>(time + band)});
            down.push_back({x, static_cast<float>(std::max(0.0, time - band))});
        }
        manager->setSettingsFigures(up, Zem::Color::Red(), down, Zem::Color::Orange());
        _tripTimeResult->setData(std::make_shared<ZemTree::ResultMultiGraph>(
            std::map<std::string, std::vector<Zem::Point>>{{localText("Phases A, B, C", "Фазы A, B, C"), points}},
            manager));
    });
    for (const double multiple : _runMultiples) {
        currents->setPhasors(balanced(0.0));
        settle(relay);
        if (!_waitForInput(trip, false, SettleTimeout)) {
            if (!_isStopRequested())
                _report(localText("The trip contact does not open without current",
                                  "Контакт отключения не размыкается без тока"));
            break;
        }
        const double current = multiple * _runPickup;
        const double expected = RelayLogic::curveTime(_runCurve, multiple, _runTimeMultiplier);
        _report(formatNumber(multiple, 2) + localText(" x pickup (", " x пуск (") + formatNumber(current, 3)
                + localText(" A), expected ", " А), ожидается ") + formatNumber(expected, 3) + localText(" s", " с"));
        currents->setPhasors(balanced(current));
        const Clock::time_point injected = currents->getLastChangeTime();
        // Twice the scaled time and a second more: only a relay that does not trip at all waits that long.
        const auto timeout = std::chrono::milliseconds(1000)
                             + std::chrono::milliseconds(std::llround(2000.0 * expected * settings.timeScale));
        const std::optional<Clock::time_point> closed = _waitForInput(trip, true, timeout);
        if (_isStopRequested())
            break;
        if (!closed) {
            const double waited = std::chrono::duration<double>(timeout).count() / settings.timeScale;
            points.push_back({current, waited});
            _report(localText("No trip within ", "Нет срабатывания за ") + formatNumber(waited, 3)
                    + localText(" s", " с"));
            _onPointMeasured();
            continue;
        }
        // The contact's own stamp proves the trip; the relay's record gives the time without the threads' jitter.
        const double contact = std::chrono::duration<double>(*closed - injected).count() / settings.timeScale;
        const double reported = relay.getLogic().getLastReportedTripTime().value_or(contact);
        points.push_back({current, reported});
        _report(localText("Trip after ", "Срабатывание через ") + formatNumber(reported, 3)
                + localText(" s (contact after ", " с (контакт через ") + formatNumber(contact, 3)
                + localText(" s)", " с)"));
        _onPointMeasured();
    }
    finish.now();
}

void TripTimeTest::_setExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode)
{
    RelayTestBase::_setExtendedXml(own, mode);
    _readNumbers(own, multiplesAttribute, _multiples, multiplesFromText, mode);
}

void TripTimeTest::_getExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) const
{
    RelayTestBase::_getExtendedXml(own, mode);
    own->set_attribute(multiplesAttribute, multiplesToText(_multiples));
}

} // namespace ZemDemo
