#pragma once

#include <string>

namespace ZemTree {

class Deviation;

// What a numeric measurement is compared with. Immutable and shared between results, always owned by a
// std::shared_ptr made with std::make_shared; the destructor is protected, so a pointer to this interface
// cannot delete the concrete object.
class NumericAssessment {
public:
    // Whether one value is acceptable; may overwrite `deviation` with how far it lies from the setting.
    virtual bool isValidMeasurment(double measurment, Deviation& deviation) const = 0;
    // Whether a spread of values from `low` to `high` is acceptable, judged by its worse end.
    virtual bool isValidMeasurment(double low, double high, Deviation& deviation) const = 0;
    // What the measurement is compared with, for display; empty when there is no such value.
    virtual std::string getDisplayValue() const = 0;

protected:
    NumericAssessment() = default;
    NumericAssessment(const NumericAssessment&) = default;
    NumericAssessment& operator=(const NumericAssessment&) = default;
    ~NumericAssessment() = default;
};

} // namespace ZemTree
