#include "results/ResultString.h"

#include "results/StringAssessment.h"

namespace ZemTree {

ResultString::ResultString() = default;

ResultString::ResultString(const std::vector<std::string>& measurments, std::shared_ptr<StringAssessment> assessment)
    : _measurmentCollection(measurments), _assessment(std::move(assessment))
{
    if (measurments.empty()) {
        _setState(ResultState::Error, std::string());
        return;
    }
    _extractMeasurmentData(measurments);
    if (!_assessment)
        _installReferenceMode();
    else
        _checkAssessment();
}

void ResultString::_extractMeasurmentData(const std::vector<std::string>& measurments)
{
    _measurment = measurments.front();
    if (!_assessment)
        return;
    // A rejected reading is the one to show.
    for (const std::string& text : measurments) {
        if (!_assessment->isValidMeasurment(text)) {
            _measurment = text;
            return;
        }
    }
}

void ResultString::_installReferenceMode()
{
    _setState(ResultState::Ok, std::string());
}

void ResultString::_checkAssessment()
{
    _setState(_assessment->isValidMeasurment(_measurment) ? ResultState::Ok : ResultState::NotOk, std::string());
}

} // namespace ZemTree
