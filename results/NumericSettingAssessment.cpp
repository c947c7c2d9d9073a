#include "results/NumericSettingAssessment.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/NumericHelper.h"
#include "core/tree/Deviation.h"
#include "core/tree/RangeStructure.h"

#include <cmath>

namespace ZemTree {

namespace {

// A tolerance that is not finite is refused: it admits nothing rather than everything.
bool admits(const RangeStructure& range, double deviation)
{
    return std::isfinite(range.getLow()) && std::isfinite(range.getHigh()) && range.contains(deviation);
}

} // namespace

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

    // A measurement or a setting that is not finite passes no tolerance.
    if (!std::isfinite(measurment) || !std::isfinite(_setting))
        return false;
    // The rounded percentage is what is compared, so 5.004 % passes a range that ends at 5 %.
    if (relative.hasValue() && admits(_tolerance->relative().getValue(), relative.getValue()))
        return true;
    if (absolute.hasValue())
        return admits(_tolerance->absolute().getValue(), absolute.getValue());
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
