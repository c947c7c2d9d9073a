#include "relay/ImpedanceZoneTest.h"

#include "containers/ResultCollectionContainer.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/tree/Measures.h"
#include "relay/DemoRelay.h"
#include "relay/DemoRelayCommon.h"
#include "relay/RelayLogic.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/graph/GraphZPhiManager.h"
#include "results/graph/ResultMultiGraph.h"
#include "values/NumericUnit.h"

#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace ZemDemo {

namespace {

const char* const anglesAttribute = "Angles";
constexpr double Pi = 3.14159265358979323846;

std::vector<Zem::PointF> scaled(const std::vector<Zem::Point>& polygon, double factor)
{
    std::vector<Zem::PointF> points;
    for (const Zem::Point& point : polygon)
        points.push_back({static_cast<float>(point.x * factor), static_cast<float>(point.y * factor)});
    return points;
}

std::vector<double> anglesFromText(const std::string& text)
{
    std::vector<double> angles = numbersFromText(text, "an angle");
    if (angles.empty())
        throw std::runtime_error("An impedance zone test needs at least one angle");
    return angles;
}

} // namespace

ImpedanceZoneTest::ImpedanceZoneTest() : RelayTestBase("ImpedanceZoneTest") {}

ImpedanceZoneTest::ImpedanceZoneTest(const std::string& id, const ZemTree::LocalString& description)
    : RelayTestBase(id, description)
{
}

ImpedanceZoneTest::~ImpedanceZoneTest()
{
    _stopAndJoin();
}

void ImpedanceZoneTest::_fillTemplate()
{
    RelayTestBase::_fillTemplate();
    _start = _addInputContact("StartContact", ZemTree::LocalString::create("Start contact", "Контакт пуска"),
                              RelayLogic::ZoneStartInputPath);
    _trip = _addInputContact("TripContact", ZemTree::LocalString::create("Trip contact", "Контакт отключения"),
                             RelayLogic::ZoneTripInputPath);
    _outputs = _addAnalogOutputs({RelayLogic::CurrentGroupPath, RelayLogic::VoltageGroupPath});
    _tolerance = _addSetting("Tolerance", ZemTree::LocalString::create("Reach tolerance", "Допуск"), 5.0,
                             ZemTree::Measures::Percent());
    _steps = _addSetting("Steps", ZemTree::LocalString::create("Search steps", "Шаги поиска"), 6.0,
                         ZemTree::Measures::None());
    _reachR = _addLinkedSetting("ReachR", ZemTree::LocalString::create("Resistive reach", "Уставка по R"), 10.0,
                                ZemTree::Measures::Ohm(), "ReachR");
    _reachX = _addLinkedSetting("ReachX", ZemTree::LocalString::create("Reactive reach", "Уставка по X"), 10.0,
                                ZemTree::Measures::Ohm(), "ReachX");
    _lineAngle = _addLinkedSetting("LineAngle", ZemTree::LocalString::create("Line angle", "Угол линии"), 75.0,
                                   ZemTree::Measures::Gradus(), "LineAngle");
    _reachResult = getResults()->add(std::make_unique<ZemTree::ResultMultiGraphUnit>(
        "Reach", ZemTree::LocalString::create("Zone reach", "Граница зоны"), ZemTree::LocalString::Empty(), nullptr));
}

void ImpedanceZoneTest::_prepare()
{
    _runStartPath = _wiredPath(_start);
    _runTripPath = _wiredPath(_trip);
    _runCurrentsPath = _wiredPath(_outputs, 0);
    _runVoltagesPath = _wiredPath(_outputs, 1);
    _runAngles = _angles;
    _runTolerance = _settingValue(_tolerance);
    _runSteps = static_cast<int>(std::lround(std::clamp(_settingValue(_steps), MinSteps, MaxSteps)));
    _runReachR = _settingValue(_reachR);
    _runReachX = _settingValue(_reachX);
    _runLineAngle = _settingValue(_lineAngle);
    _reachResult->clearResult();
}

void ImpedanceZoneTest::_checkOwnSettings(const RelaySettings&, std::vector<std::string>& problems) const
{
    const double tolerance = _settingValue(_tolerance);
    const double steps = _settingValue(_steps);
    if (!(_settingValue(_reachR) > 0.0) || !(_settingValue(_reachX) > 0.0))
        problems.push_back(localText("Settings ReachR and ReachX must be above 0 Ohm, not ",
                                     "Уставки ReachR и ReachX должны быть больше 0 Ом, а не ")
                           + shortNumber(_settingValue(_reachR)) + localText(" and ", " и ")
                           + shortNumber(_settingValue(_reachX)));
    if (!(_settingValue(_lineAngle) >= 1.0 && _settingValue(_lineAngle) <= 90.0))
        problems.push_back(localText("Setting LineAngle is ", "Уставка LineAngle равна ")
                           + shortNumber(_settingValue(_lineAngle))
                           + localText(" deg; the limits are 1 to 90 deg", " град; допустимо от 1 до 90 град"));
    if (!(tolerance >= 0.0 && tolerance < 100.0))
        problems.push_back(localText("Setting Tolerance is ", "Уставка Tolerance равна ") + shortNumber(tolerance)
                           + localText(" %; the limits are 0 to below 100 %", " %; допустимо от 0 до менее 100 %"));
    if (!(steps >= MinSteps && steps <= MaxSteps))
        problems.push_back(localText("Setting Steps is ", "Уставка Steps равна ") + shortNumber(steps)
                           + localText("; the limits are ", "; допустимо от ") + shortNumber(MinSteps)
                           + localText(" to ", " до ") + shortNumber(MaxSteps));
}

void ImpedanceZoneTest::_execute(SimulatedRelayUnderTest& relay)
{
    ZemDevice::IVirtualAnalogOutputGroup* const currents = findAnalogGroup(relay, _runCurrentsPath);
    ZemDevice::IVirtualAnalogOutputGroup* const voltages = findAnalogGroup(relay, _runVoltagesPath);
    ZemDevice::IVirtualBinaryInputChannel* const start = findInput(relay, _runStartPath);
    ZemDevice::IVirtualBinaryInputChannel* const trip = findInput(relay, _runTripPath);
    const RelaySettings& settings = relay.getSettings();
    const std::vector<Zem::Point> polygon = RelayLogic::zonePolygon(_runReachR, _runReachX, _runLineAngle);
    // Below the overcurrent pickup, so that only the distance zone answers.
    const double current = std::max(0.5 * settings.pickup, 2.0 * RelayLogic::ZoneMinimumCurrent);
    const auto tripTimeout =
        std::chrono::milliseconds(1000)
        + std::chrono::milliseconds(std::llround(2000.0 * RelayLogic::ZoneOperateTime * settings.timeScale));

    // One shot at `impedance` ohms along `angle`: true when the relay trips, nothing when the test was stopped.
    const auto shoot = [&](double impedance, double angle) -> std::optional<bool> {
        // The voltage first: without current the zone does not measure, so it never sees a half-set fault.
        voltages->setPhasor(0, {impedance * current, angle, 50.0});
        currents->setPhasor(0, {current, 0.0, 50.0});
        settle(relay);
        bool isTripped = false;
        if (start->getState()) {
            isTripped = _waitForInput(trip, true, tripTimeout).has_value();
            if (!isTripped && !_isStopRequested())
                _report(localText("Zone started at ", "Зона пустилась при ") + formatNumber(impedance, 3)
                        + localText(" Ohm but did not trip", " Ом, но не сработала"));
        }
        currents->setPhasor(0, {0.0, 0.0, 50.0});
        voltages->setPhasor(0, {0.0, 0.0, 50.0});
        settle(relay);
        if (_isStopRequested())
            return std::nullopt;
        return isTripped;
    };

    std::vector<Zem::Point> points;
    // What was measured is kept and the outputs are switched off however the measuring ends, also when the
    // relay stops answering halfway.
    FinishGuard finish([&] {
        currents->setPhasor(0, {0.0, 0.0, 50.0});
        voltages->setPhasor(0, {0.0, 0.0, 50.0});
        _setMeasuredPoints(points.size());
        if (points.empty())
            return;
        auto manager = std::make_shared<ZemTree::GraphZPhiManager>();
        std::vector<Zem::PointF> outer = scaled(polygon, 1.0 + _runTolerance / 100.0);
        std::vector<Zem::PointF> inner = scaled(polygon, 1.0 - _runTolerance / 100.0);
        manager->setSettingsFigures(outer, Zem::Color::Red(), inner, Zem::Color::Orange());
        _reachResult->setData(std::make_shared<ZemTree::ResultMultiGraph>(
            std::map<std::string, std::vector<Zem::Point>>{{localText("Zone 1 reach", "Граница зоны 1"), points}},
            manager));
    });
    for (const double angle : _runAngles) {
        const double reach = RelayLogic::rayReach(polygon, angle);
        double inside = 0.5 * reach;
        double outside = 1.5 * reach;
        const std::optional<bool> nearShot = shoot(inside, angle);
        if (!nearShot)
            break;
        const std::optional<bool> farShot = nearShot.value() ? shoot(outside, angle) : std::optional<bool>(true);
        if (!farShot)
            break;
        double found = 0.0;
        if (!*nearShot)
            found = inside;
        else if (*farShot)
            found = outside;
        else {
            bool isStopped = false;
            for (int step = 0; step < _runSteps; ++step) {
                const double middle = (inside + outside) / 2.0;
                const std::optional<bool> shot = shoot(middle, angle);
                if (!shot) {
                    isStopped = true;
                    break;
                }
                (*shot ? inside : outside) = middle;
            }
            if (isStopped)
                break;
            found = (inside + outside) / 2.0;
        }
        _report(formatNumber(angle, 1) + localText(" deg: reach ", " град: граница ") + formatNumber(found, 3)
                + localText(" Ohm, setting ", " Ом, уставка ") + formatNumber(reach, 3) + localText(" Ohm", " Ом"));
        points.push_back({found * std::cos(angle * Pi / 180.0), found * std::sin(angle * Pi / 180.0)});
        _onPointMeasured();
    }
    finish.now();
}

void ImpedanceZoneTest::_setExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode)
{
    RelayTestBase::_setExtendedXml(own, mode);
    _readNumbers(own, anglesAttribute, _angles, anglesFromText, mode);
}

void ImpedanceZoneTest::_getExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) const
{
    RelayTestBase::_getExtendedXml(own, mode);
    own->set_attribute(anglesAttribute, numbersToText(_angles, 2));
}

} // namespace ZemDemo
