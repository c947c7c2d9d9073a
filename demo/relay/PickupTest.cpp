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
#include "values/NumericUnit.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultMultiNumericUnit.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace ZemDemo {

namespace {

const char* const phaseNames[] = {"Phase A", "Phase B", "Phase C"};
const double phaseAngles[] = {0.0, -120.0, 120.0};

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
    _tolerance = _addSetting("Tolerance", ZemTree::LocalString::create("Tolerance", "Допуск"), 2.5,
                             ZemTree::Measures::Percent());
    _step = _addSetting("Step", ZemTree::LocalString::create("Ramp step", "Шаг"), 0.5, ZemTree::Measures::Percent());
    _rampStart = _addSetting("RampStart", ZemTree::LocalString::create("Ramp start", "Начало"), 90.0,
                             ZemTree::Measures::Percent());
    _rampEnd =
        _addSetting("RampEnd", ZemTree::LocalString::create("Ramp end", "Конец"), 120.0, ZemTree::Measures::Percent());
    _pickupResult = getResults()->add(std::make_unique<ZemTree::ResultMultiNumericUnit>(
        "Pickup", ZemTree::LocalString::create("Pickup current", "Ток срабатывания"), ZemTree::LocalString::Empty(),
        nullptr, ZemTree::Measures::Ampere()));
}

void PickupTest::_prepare()
{
    _runTolerance = _settingValue(_tolerance);
    _runStep = _settingValue(_step);
    _runRampStart = _settingValue(_rampStart);
    _runRampEnd = _settingValue(_rampEnd);
    _pickupResult->clearResult();
}

void PickupTest::_execute(SimulatedRelayUnderTest& relay)
{
    ZemDevice::IVirtualAnalogOutputGroup* const currents = findAnalogGroup(relay, RelayLogic::CurrentGroupPath);
    ZemDevice::IVirtualBinaryInputChannel* const start = findInput(relay, RelayLogic::StartInputPath);
    const double pickup = relay.getSettings().pickup;
    if (!(_runStep > 0.0) || !(_runRampEnd > _runRampStart))
        throw std::logic_error("The ramp needs a positive step and an end above its start");

    std::map<std::string, std::vector<std::string>> measured;
    // What was measured is kept and the outputs are switched off however the measuring ends, also when the
    // relay stops answering halfway.
    FinishGuard finish([&] {
        currents->setPhasors(balanced(0.0));
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
        _report(std::string(phaseNames[phase]) + ": ramping from " + formatNumber(pickup * _runRampStart / 100.0, 3)
                + " A");
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
            measured[phaseNames[phase]] = {formatNumber(*found, 4)};
            _report(std::string(phaseNames[phase]) + ": start at " + formatNumber(*found, 4) + " A");
        }
        else {
            // No start over the whole ramp is a measurement too: the end of the ramp, which fails the setting.
            const double end = pickup * _runRampEnd / 100.0;
            measured[phaseNames[phase]] = {formatNumber(end, 4)};
            _report(std::string(phaseNames[phase]) + ": no start up to " + formatNumber(end, 4) + " A");
        }
    }
    finish.now();
}

} // namespace ZemDemo
