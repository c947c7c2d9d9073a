#pragma once

#include "core/tree/Deviation.h"
#include "results/ResultBase.h"

#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

class NumericAssessment;

// The immutable outcome of measuring one quantity, once or several times. The constructor converts the raw
// texts, takes the centre and half spread of the values and judges the worse end of the spread by the
// assessment; nothing changes afterwards.
class ResultNumeric : public ResultBase {
public:
    // An empty result (nothing measured yet) without an assessment.
    ResultNumeric();
    // No texts give Error; a text that is no number gives Error with that text as the message; without an
    // assessment the result is a reference reading and Ok; otherwise Ok or NotOk by the assessment.
    ResultNumeric(const std::vector<std::string>& measurments, std::shared_ptr<NumericAssessment> assessment);

    const std::vector<std::string>& getMeasurmentCollection() const { return _measurmentCollection; }
    // May be null; not owned by the caller.
    NumericAssessment* getAssessment() const { return _assessment.get(); }
    // The shared assessment itself, for results and tables that share it further.
    const std::shared_ptr<NumericAssessment>& getAssessmentPointer() const { return _assessment; }
    // The centre of the measured values; meaningful only in state Ok or NotOk.
    double getMeasurment() const { return _measurment; }
    // Half the spread of the measured values, 0 when they all agree; likewise meaningful only in Ok or NotOk.
    double getMeasurmentDeviation() const { return _measurmentDeviation; }
    // The deviation of the worse end from the setting; both parts empty when nothing was assessed.
    const Deviation& getDeviation() const { return _deviation; }
    // In Ok or NotOk "centre" or "centre±halfSpread", numbers as Zem::convertToString<double, true>(v, 2) writes
    // them ("2±1"); otherwise empty.
    std::string getMeasurmentDisplayValue() const;

protected:
    // Returns false, with state Error and the offending text as the message, at the first text that is no number.
    bool _extractMeasurmentData(const std::vector<std::string>& measurments);
    void _installReferenceMode();
    void _checkAssessment();

private:
    std::vector<std::string> _measurmentCollection;
    std::shared_ptr<NumericAssessment> _assessment;
    double _measurment = 0.0;
    double _measurmentDeviation = 0.0;
    Deviation _deviation;
};

} // namespace ZemTree
