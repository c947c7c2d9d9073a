#include "results/StringSettingAssessment.h"

namespace ZemTree {

StringSettingAssessment::StringSettingAssessment(const std::string& validValue) : _validValue(validValue) {}

bool StringSettingAssessment::isValidMeasurment(const std::string& measurment) const
{
    return measurment == _validValue;
}

} // namespace ZemTree
