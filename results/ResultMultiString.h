#pragma once

#include "results/ResultBase.h"
#include "results/ResultString.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

class StringAssessment;

// Several texts read at once: one string result per named item, all judged by one shared assessment, with the
// items' states folded into one (ResultStateFold).
class ResultMultiString : public ResultBase {
public:
    // An empty result without items and without an assessment.
    ResultMultiString();
    // One item per key, in key order; an empty map gives Error.
    ResultMultiString(const std::map<std::string, std::vector<std::string>>& measurments,
                      std::shared_ptr<StringAssessment> assessment);

    // May be null; not owned by the caller.
    StringAssessment* getAssessment() const { return _assessment.get(); }
    const std::shared_ptr<StringAssessment>& getAssessmentPointer() const { return _assessment; }

    // The items by key, ascending by the bytes of the key.
    std::map<std::string, ResultString> _items;

private:
    std::shared_ptr<StringAssessment> _assessment;
};

} // namespace ZemTree
