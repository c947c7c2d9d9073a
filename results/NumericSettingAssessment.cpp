#include "results/NumericSettingAssessment.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/NumericHelper.h"
#include "core/tree/Deviation.h"

#include <cmath>

namespace ZemTree {

NumericSettingAssessment::NumericSettingAssessment(double setting, std::shared_ptr<ToleranceReduced> tolerance)
    : _setting(setting), _tolerance(std::move(tolerance))
{
    // A missing tolerance admits the setting alone, not every value.
    if (!_tolerance)
        _tolerance = std::make_shared<ToleranceReduced>(ToleranceReduced::Zero());
}

bool NumericSettingAssessment::isValidMeasurment(double measurment, Deviation& deviation) const
{
    Zem::Nullable<double> relative;
    Zem::Nullable<double> absolute;
    // A relative deviation from zero does not exist; a setting that is not a number counts as non-zero.
    if (_tolerance->relative().hasValue() && _setting != 0.0)
        relative = Zem::NumericHelper::stepRounding((measurment - _setting) / _setting * 100.0, 0.01, 0.0);
    if (_tolerance->absolute().hasValue())
        absolute = measurment - _setting;
    deviation = Deviation(relative, absolute);

    // The rounded percentage is what is compared, so 5.004 % passes a range that ends at 5 %.
    if (relative.hasValue() && _tolerance->relative().getValue().contains(relative.getValue()))
        return true;
    if (absolute.hasValue())
        return _tolerance->absolute().getValue().contains(absolute.getValue());
    return false;
}

bool NumericSettingAssessment::isValidMeasurment(double low, double high, Deviation& deviation) const
{
    // A spread is only as good as its worse end.
    const double assessed = std::fabs(low - _setting) < std::fabs(high - _setting) ? high : low;
    return isValidMeasurment(assessed, deviation);
}

std::string NumericSettingAssessment::getDisplayValue() const
{
    return Zem::convertToString<double, true>(_setting, 2);
}

} // namespace ZemTree
