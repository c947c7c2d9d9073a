#pragma once

#include "results/NumericAssessment.h"

namespace ZemTree {

// A verdict reached before the result was made, e.g. a point judged against a zone polygon. It has no setting,
// computes no deviation and shows nothing.
class NumericFixedAssessment final : public NumericAssessment {
public:
    explicit NumericFixedAssessment(bool isValid);

    // The stored flag; `deviation` is left as it was.
    bool isValidMeasurment(double measurment, Deviation& deviation) const override;
    bool isValidMeasurment(double low, double high, Deviation& deviation) const override;
    // Always empty.
    std::string getDisplayValue() const override;

    bool getIsValid() const { return _isValid; }

private:
    bool _isValid;
};

} // namespace ZemTree
