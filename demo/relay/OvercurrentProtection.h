#pragma once

#include "relay/ProtectionContainer.h"

namespace ZemTree {
class NumericUnit;
}

namespace ZemDemo {

class CurveUnit;

// The inverse-time overcurrent stage: `Pickup` (A), `Curve` and `TimeMultiplier`.
class OvercurrentProtection : public ProtectionContainer {
public:
    OvercurrentProtection();
    OvercurrentProtection(const std::string& id, const ZemTree::LocalString& description);

    ZemTree::NumericUnit* getPickup() const { return _pickup; }
    CurveUnit* getCurve() const { return _curve; }
    ZemTree::NumericUnit* getTimeMultiplier() const { return _timeMultiplier; }

protected:
    void _fillTemplate() override;

private:
    ZemTree::NumericUnit* _pickup = nullptr;
    CurveUnit* _curve = nullptr;
    ZemTree::NumericUnit* _timeMultiplier = nullptr;
};

} // namespace ZemDemo
