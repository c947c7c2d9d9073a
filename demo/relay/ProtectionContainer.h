#pragma once

#include "containers/DefendContainer.h"
#include "evaluation/IHierarchicalContainer.h"

#include <string>

namespace ZemTree {
class NumericUnit;
class Measure;
} // namespace ZemTree

namespace ZemDemo {

class CurveUnit;

// A protection of the sample project: its tests stand in its `Tests` section, and it stands in a substation.
// The kinds below also hold the relay's own settings of that protection in their `Settings` section: the test
// object that the tests' expected values refer to.
class ProtectionContainer : public ZemTree::DefendContainer, public virtual ZemTree::IHierarchicalContainer {
public:
    ProtectionContainer();
    ProtectionContainer(const std::string& id, const ZemTree::LocalString& description);

protected:
    explicit ProtectionContainer(const char* className);
    // Adds a number to the `Settings` section; only while the template is filled.
    ZemTree::NumericUnit* _addSetting(const std::string& id, const ZemTree::LocalString& description, double value,
                                      ZemTree::Measure* measure, double minimum);
};

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

// The contact that follows a binary output: `Delay` (s).
class ContactsProtection : public ProtectionContainer {
public:
    ContactsProtection();
    ContactsProtection(const std::string& id, const ZemTree::LocalString& description);

    ZemTree::NumericUnit* getDelay() const { return _delay; }

protected:
    void _fillTemplate() override;

private:
    ZemTree::NumericUnit* _delay = nullptr;
};

} // namespace ZemDemo
