#pragma once

#include "results/ResultNumeric.h"

#include <memory>
#include <string>

namespace ZemTree {

class NumericAssessment;

// One row of a table of a graph result: the argument of a point and the judged value measured there, an ordinary
// numeric result with a state, a deviation and a display text of its own.
class GraphDataRecord {
public:
    // The value is the one-element list of `measurment`, judged by `assessment` (which may be null).
    GraphDataRecord(double value, const std::string& measurment, std::shared_ptr<NumericAssessment> assessment);
    // The measurement as Zem::convertToString<double, true>(measurment, 2) writes it: "0" below 1e-13.
    GraphDataRecord(double value, double measurment, std::shared_ptr<NumericAssessment> assessment);

    double getValue() const { return _value; }
    const ResultNumeric& getResult() const { return _result; }

private:
    double _value;
    ResultNumeric _result;
};

} // namespace ZemTree
