#pragma once

#include "relay/RelayTestBase.h"

#include <string>

namespace ZemTree {
class ResultMultiNumericUnit;
}

namespace ZemTree {
class AnalogOutputRedirectCollectionUnit;
class ContactUnit;
} // namespace ZemTree

namespace ZemDemo {

// Finds the pickup current of the overcurrent stage phase by phase: ramps the phase current up in small steps
// from below the setting until the start contact closes, and judges the current found against the relay's pickup.
class PickupTest : public RelayTestBase {
public:
    // The most ramp steps one phase may take: a finer ramp would keep the relay busy for hours.
    static constexpr double MaxRampSteps = 10000.0;
    // The ramp's bounds in percent of the pickup.
    static constexpr double MaxRampPercent = 1000.0;

    PickupTest();
    PickupTest(const std::string& id, const ZemTree::LocalString& description);
    ~PickupTest() override;

    ZemTree::ResultMultiNumericUnit* getPickupResult() const { return _pickupResult; }

protected:
    void _fillTemplate() override;
    void _prepare() override;
    void _execute(SimulatedRelayUnderTest& relay) override;
    void _checkOwnSettings(const RelaySettings& relay, std::vector<std::string>& problems) const override;
    unsigned _getPlannedPoints() const override { return 3; }

private:
    ZemTree::NumericUnit* _tolerance = nullptr;
    ZemTree::NumericUnit* _step = nullptr;
    ZemTree::NumericUnit* _rampStart = nullptr;
    ZemTree::NumericUnit* _rampEnd = nullptr;
    ZemTree::NumericUnit* _pickup = nullptr;
    ZemTree::ResultMultiNumericUnit* _pickupResult = nullptr;

    // Copied from the settings when a run starts; read by the test's thread only.
    double _runTolerance = 0.0;
    double _runStep = 0.0;
    double _runRampStart = 0.0;
    double _runRampEnd = 0.0;
    double _runPickup = 0.0;
    ZemTree::ContactUnit* _start = nullptr;
    ZemTree::AnalogOutputRedirectCollectionUnit* _outputs = nullptr;
    std::string _runStartPath;
    std::string _runCurrentsPath;
};

} // namespace ZemDemo
