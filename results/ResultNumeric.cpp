#include "results/ResultNumeric.h"

#include "core/common/ConvertionHelper.h"
#include "results/NumericAssessment.h"

#include <cmath>

namespace ZemTree {

ResultNumeric::ResultNumeric() = default;

ResultNumeric::ResultNumeric(const std::vector<std::string>& measurments, std::shared_ptr<NumericAssessment> assessment)
    : _measurmentCollection(measurments), _assessment(std::move(assessment))
{
    if (measurments.empty()) {
        _setState(ResultState::Error, std::string());
        return;
    }
    if (!_extractMeasurmentData(measurments))
        return;
    if (!_assessment)
        _installReferenceMode();
    else
        _checkAssessment();
}

std::string ResultNumeric::getMeasurmentDisplayValue() const
{
    if (getState() != ResultState::Ok && getState() != ResultState::NotOk)
        return std::string();
    std::string text = Zem::convertToString<double, true>(_measurment, 2);
    if (_measurmentDeviation != 0.0)
        text += "±" + Zem::convertToString<double, true>(_measurmentDeviation, 2);
    return text;
}

bool ResultNumeric::_extractMeasurmentData(const std::vector<std::string>& measurments)
{
    double smallest = 0.0;
    double greatest = 0.0;
    bool isFirst = true;
    for (const std::string& text : measurments) {
        double value = 0.0;
        if (!Zem::tryConvert<double, true>(text, value) || std::isinf(value)) {
            // The first bad text ends everything and names the reason; "inf" is no measurement either. Not a
            // number is left to the assessment, which fails it.
            _setState(ResultState::Error, text);
            return false;
        }
        if (isFirst || value > greatest)
            greatest = value;
        if (isFirst || value < smallest)
            smallest = value;
        isFirst = false;
    }
    if (greatest == smallest) {
        _measurment = greatest;
        _measurmentDeviation = 0.0;
    }
    else {
        _measurment = (smallest + greatest) * 0.5;
        _measurmentDeviation = greatest - _measurment;
    }
    return true;
}

void ResultNumeric::_installReferenceMode()
{
    // A result without an assessment is a reference reading, always accepted.
    _setState(ResultState::Ok, std::string());
}

void ResultNumeric::_checkAssessment()
{
    const bool isValid = _assessment->isValidMeasurment(_measurment - _measurmentDeviation,
                                                        _measurment + _measurmentDeviation, _deviation);
    _setState(isValid ? ResultState::Ok : ResultState::NotOk, std::string());
}

} // namespace ZemTree
