#pragma once

#include "results/ResultBase.h"

#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

class StringAssessment;

// The immutable outcome of reading one text, once or several times. With an assessment the first text that
// fails it is the measurement, so that a rejected reading is what is shown; otherwise the first text.
class ResultString : public ResultBase {
public:
    // An empty result (nothing measured yet) without an assessment.
    ResultString();
    // No texts give Error; without an assessment Ok; otherwise Ok or NotOk by the assessment.
    ResultString(const std::vector<std::string>& measurments, std::shared_ptr<StringAssessment> assessment);

    const std::vector<std::string>& getMeasurmentCollection() const { return _measurmentCollection; }
    // May be null; not owned by the caller.
    StringAssessment* getAssessment() const { return _assessment.get(); }
    const std::shared_ptr<StringAssessment>& getAssessmentPointer() const { return _assessment; }
    const std::string& getMeasurment() const { return _measurment; }

protected:
    void _extractMeasurmentData(const std::vector<std::string>& measurments);
    void _installReferenceMode();
    void _checkAssessment();

private:
    std::vector<std::string> _measurmentCollection;
    std::shared_ptr<StringAssessment> _assessment;
    std::string _measurment;
};

} // namespace ZemTree
