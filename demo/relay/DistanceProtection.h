#pragma once

#include "relay/ProtectionContainer.h"

namespace ZemTree {
class NumericUnit;
}

namespace ZemDemo {

// The quadrilateral distance zone: `ReachR` and `ReachX` (Ω) and `LineAngle` (°).
class DistanceProtection : public ProtectionContainer {
public:
    DistanceProtection();
    DistanceProtection(const std::string& id, const ZemTree::LocalString& description);

    ZemTree::NumericUnit* getReachR() const { return _reachR; }
    ZemTree::NumericUnit* getReachX() const { return _reachX; }
    ZemTree::NumericUnit* getLineAngle() const { return _lineAngle; }

protected:
    void _fillTemplate() override;

private:
    ZemTree::NumericUnit* _reachR = nullptr;
    ZemTree::NumericUnit* _reachX = nullptr;
    ZemTree::NumericUnit* _lineAngle = nullptr;
};

} // namespace ZemDemo
