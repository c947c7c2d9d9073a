#include "relay/PickupTest.h"

#include "containers/ResultCollectionContainer.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/tree/Measures.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/ToleranceReduced.h"
#include "relay/DemoRelay.h"
#include "relay/DemoRelayCommon.h"
#include "relay/RelayLogic.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultMultiNumericUnit.h"
#include "values/NumericUnit.h"

#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace ZemDemo {

namespace {

const char* const phaseNames[] = {"Phase A", "Phase B", "Phase C"};
const char* const russianPhaseNames[] = {"Фаза A", "Фаза B", "Фаза C"};
const double phaseAngles[] = {0.0, -120.0, 120.0};

// Result keys and progress lines alike are written in the user's language.
std::string phaseName(std::size_t phase)
{
    return localText(phaseNames[phase], russianPhaseNames[phase]);
}

} // namespace

PickupTest::PickupTest() : RelayTestBase("PickupTest") {}

PickupTest::PickupTest(const std::string& id, const ZemTree::LocalString& description) : RelayTestBase(id, description)
{
}

PickupTest::~PickupTest()
{
    _stopAndJoin();
}

void PickupTest::_fillTemplate()
{
    RelayTestBase::_fillTemplate();
    _start = _addInputContact("StartContact", ZemTree::LocalString::create("Start contact", "Контакт пуска"),
                              RelayLogic::StartInputPath);
    _outputs = _addAnalogOutputs({RelayLogic::CurrentGroupPath});
    _tolerance = _addSetting("Tolerance", ZemTree::LocalString::create("Tolerance", "Допуск"), 2.5,
                             ZemTree::Measures::Percent());
    _step = _addSetting("Step", ZemTree::LocalString::create("Ramp step", "Шаг"), 0.5, ZemTree::Measures::Percent());
    _rampStart = _addSetting("RampStart", ZemTree::LocalString::create("Ramp start", "Начало"), 90.0,
                             ZemTree::Measures::Percent());
    _rampEnd =
        _addSetting("RampEnd", ZemTree::LocalString::create("Ramp end", "Конец"), 120.0, ZemTree::Measures::Percent());
    _pickup = _addLinkedSetting("Pickup", ZemTree::LocalString::create("Pickup setting", "Уставка срабатывания"), 1.0,
                                ZemTree::Measures::Ampere(), "Pickup");
    _pickupResult = getResults()->add(std::make_unique<ZemTree::ResultMultiNumericUnit>(
        "Pickup", ZemTree::LocalString::create("Pickup current", "Ток срабатывания"), ZemTree::LocalString::Empty(),
        nullptr, ZemTree::Measures::Ampere()));
}

void PickupTest::_prepare()
{
    _runStartPath = _wiredPath(_start);
    _runCurrentsPath = _wiredPath(_outputs, 0);
    _runTolerance = _settingValue(_tolerance);
    _runStep = _settingValue(_step);
    _runRampStart = _settingValue(_rampStart);
    _runRampEnd = _settingValue(_rampEnd);
    _runPickup = _settingValue(_pickup);
    _pickupResult->clearResult();
}

void PickupTest::_checkOwnSettings(const RelaySettings&, std::vector<std::string>& problems) const
{
    const double tolerance = _settingValue(_tolerance);
    const double step = _settingValue(_step);
    const double rampStart = _settingValue(_rampStart);
    const double rampEnd = _settingValue(_rampEnd);
    if (!(_settingValue(_pickup) > 0.0))
        problems.push_back(localText("Setting Pickup is ", "Уставка Pickup равна ")
                           + shortNumber(_settingValue(_pickup))
                           + localText(" A; it must be above 0 A", " А; она должна быть больше 0 А"));
    if (!(tolerance >= 0.0 && tolerance <= 100.0))
        problems.push_back(localText("Setting Tolerance is ", "Уставка Tolerance равна ") + shortNumber(tolerance)
                           + localText(" %; the limits are 0 to 100 %", " %; допустимо от 0 до 100 %"));
    if (!(step > 0.0))
        problems.push_back(localText("Setting Step is ", "Уставка Step равна ") + shortNumber(step)
                           + localText(" %; it must be above 0 %", " %; она должна быть больше 0 %"));
    for (const auto& bound : {std::make_pair("RampStart", rampStart), std::make_pair("RampEnd", rampEnd)}) {
        if (!(bound.second >= 0.0 && bound.second <= MaxRampPercent))
            problems.push_back(localText("Setting ", "Уставка ") + bound.first + localText(" is ", " равна ")
                               + shortNumber(bound.second)
                               + localText(" %; the limits are 0 to ", " %; допустимо от 0 до ")
                               + shortNumber(MaxRampPercent) + " %");
    }
    if (!problems.empty())
        return;
    if (!(rampEnd > rampStart)) {
        problems.push_back(localText("Setting RampEnd is ", "Уставка RampEnd равна ") + shortNumber(rampEnd)
                           + localText(" %; it must be above RampStart, ", " %; она должна быть больше RampStart, ")
                           + shortNumber(rampStart) + " %");
        return;
    }
    const double steps = (rampEnd - rampStart) / step;
    if (!(steps <= MaxRampSteps))
        problems.push_back(localText("Setting Step is ", "Уставка Step равна ") + shortNumber(step)
                           + localText(" %: the ramp would take ", " %: подъём занял бы ")
                           + shortNumber(std::ceil(steps)) + localText(" steps; the limit is ", " шагов; предел ")
                           + shortNumber(MaxRampSteps)
                           + localText(" steps, a Step of at least ", " шагов, Step не меньше ")
                           + shortNumber((rampEnd - rampStart) / MaxRampSteps) + " %");
}

void PickupTest::_execute(SimulatedRelayUnderTest& relay)
{
    ZemDevice::IVirtualAnalogOutputGroup* const currents = findAnalogGroup(relay, _runCurrentsPath);
    ZemDevice::IVirtualBinaryInputChannel* const start = findInput(relay, _runStartPath);
    const double pickup = _runPickup;

    std::map<std::string, std::vector<std::string>> measured;
    // What was measured is kept and the outputs are switched off however the measuring ends, also when the
    // relay stops answering halfway.
    FinishGuard finish([&] {
        currents->setPhasors(balanced(0.0));
        _setMeasuredPoints(measured.size());
        if (measured.empty())
            return;
        auto tolerance = std::make_shared<ZemTree::ToleranceReduced>(
            Zem::Nullable<ZemTree::RangeStructure>(ZemTree::RangeStructure::Standart(-_runTolerance, _runTolerance)),
            Zem::Nullable<ZemTree::RangeStructure>());
        _pickupResult->setData(std::make_shared<ZemTree::ResultMultiNumeric>(
            measured, std::make_shared<ZemTree::NumericSettingAssessment>(pickup, tolerance)));
    });
    for (std::size_t phase = 0; phase < 3 && !_isStopRequested(); ++phase) {
        currents->setPhasors(balanced(0.0));
        settle(relay);
        _report(phaseName(phase) + localText(": ramping from ", ": подъём от ")
                + formatNumber(pickup * _runRampStart / 100.0, 3) + localText(" A", " А"));
        std::optional<double> found;
        for (int step = 0;; ++step) {
            const double current = pickup * (_runRampStart + step * _runStep) / 100.0;
            if (current > pickup * _runRampEnd / 100.0 + 1e-12 || _isStopRequested())
                break;
            currents->setPhasor(phase, {current, phaseAngles[phase], 50.0});
            settle(relay);
            if (start->getState()) {
                found = current;
                break;
            }
        }
        if (_isStopRequested())
            break;
        if (found) {
            measured[phaseName(phase)] = {formatNumber(*found, 4)};
            _report(phaseName(phase) + localText(": start at ", ": пуск при ") + formatNumber(*found, 4)
                    + localText(" A", " А"));
        }
        else {
            // No start over the whole ramp is a measurement too: the end of the ramp, which fails the setting.
            const double end = pickup * _runRampEnd / 100.0;
            measured[phaseName(phase)] = {formatNumber(end, 4)};
            _report(phaseName(phase) + localText(": no start up to ", ": нет пуска до ") + formatNumber(end, 4)
                    + localText(" A", " А"));
        }
        _onPointMeasured();
    }
    finish.now();
}

} // namespace ZemDemo
