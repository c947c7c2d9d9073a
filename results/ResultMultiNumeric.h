#pragma once

#include "results/ResultBase.h"
#include "results/ResultNumeric.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

class NumericAssessment;

// Several quantities measured at once: one numeric result per named item, all judged by one shared assessment,
// with the items' states folded into one (ResultStateFold).
class ResultMultiNumeric : public ResultBase {
public:
    // An empty result without items and without an assessment.
    ResultMultiNumeric();
    // One item per key, in key order; an empty map gives Error.
    ResultMultiNumeric(const std::map<std::string, std::vector<std::string>>& measurments,
                       std::shared_ptr<NumericAssessment> assessment);

    // May be null; not owned by the caller.
    NumericAssessment* getAssessment() const { return _assessment.get(); }
    const std::shared_ptr<NumericAssessment>& getAssessmentPointer() const { return _assessment; }

    // The items by key (the display name of the item and its Name in XML), ascending by the bytes of the key.
    std::map<std::string, ResultNumeric> _items;

private:
    std::shared_ptr<NumericAssessment> _assessment;
};

} // namespace ZemTree
