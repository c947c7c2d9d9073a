#pragma once

#include "results/StringAssessment.h"

namespace ZemTree {

// A text measurement that must equal one valid text byte for byte (case counts; two empty texts are equal).
class StringSettingAssessment final : public StringAssessment {
public:
    explicit StringSettingAssessment(const std::string& validValue);

    bool isValidMeasurment(const std::string& measurment) const override;
    const std::string& getValidValue() const override { return _validValue; }

private:
    std::string _validValue;
};

} // namespace ZemTree
