#include "results/NumericFixedAssessment.h"

namespace ZemTree {

NumericFixedAssessment::NumericFixedAssessment(bool isValid) : _isValid(isValid) {}

bool NumericFixedAssessment::isValidMeasurment(double, Deviation&) const
{
    return _isValid;
}

bool NumericFixedAssessment::isValidMeasurment(double, double, Deviation&) const
{
    return _isValid;
}

std::string NumericFixedAssessment::getDisplayValue() const
{
    return std::string();
}

} // namespace ZemTree
