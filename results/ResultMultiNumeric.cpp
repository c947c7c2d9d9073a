#include "results/ResultMultiNumeric.h"

#include "results/ResultStateFold.h"

namespace ZemTree {

ResultMultiNumeric::ResultMultiNumeric() = default;

ResultMultiNumeric::ResultMultiNumeric(const std::map<std::string, std::vector<std::string>>& measurments,
                                       std::shared_ptr<NumericAssessment> assessment)
{
    // Every item has its own state and is judged by the one shared assessment.
    for (const auto& entry : measurments)
        _items.emplace(entry.first, ResultNumeric(entry.second, assessment));
    const ResultStateFold folded = ResultStateFold::fold(_items);
    _setState(folded.getState(), folded.getMessage());
    _assessment = std::move(assessment);
}

} // namespace ZemTree
