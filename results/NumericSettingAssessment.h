#pragma once

#include "core/tree/ToleranceReduced.h"
#include "results/NumericAssessment.h"

#include <memory>

namespace ZemTree {

// A measurement compared with an expected value under a reduced tolerance. A value passes when its relative
// deviation (in percent, rounded to 0.01) lies in the relative range, or else its absolute deviation lies in
// the absolute range; the deviation reported holds exactly the kinds for which the tolerance has a range.
class NumericSettingAssessment final : public NumericAssessment {
public:
    // A null tolerance is the zero tolerance (both ranges [0;0]): then only the setting itself passes.
    NumericSettingAssessment(double setting, std::shared_ptr<ToleranceReduced> tolerance);

    bool isValidMeasurment(double measurment, Deviation& deviation) const override;
    // Judges the end farther from the setting (`low` on a tie or when a distance is not a number).
    bool isValidMeasurment(double low, double high, Deviation& deviation) const override;
    // The setting as Zem::convertToString<double, true>(setting, 2) writes it.
    std::string getDisplayValue() const override;

    double getSetting() const { return _setting; }
    // Never null; not owned by the caller.
    ToleranceReduced* getTolerance() const { return _tolerance.get(); }

private:
    double _setting;
    std::shared_ptr<ToleranceReduced> _tolerance;
};

} // namespace ZemTree
