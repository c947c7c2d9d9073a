#include "results/ResultMultiString.h"

#include "results/ResultStateFold.h"

namespace ZemTree {

ResultMultiString::ResultMultiString() = default;

ResultMultiString::ResultMultiString(const std::map<std::string, std::vector<std::string>>& measurments,
                                     std::shared_ptr<StringAssessment> assessment)
{
    // Every item has its own state and is judged by the one shared assessment.
    for (const auto& entry : measurments)
        _items.emplace(entry.first, ResultString(entry.second, assessment));
    const ResultStateFold folded = ResultStateFold::fold(_items);
    _setState(folded.getState(), folded.getMessage());
    _assessment = std::move(assessment);
}

} // namespace ZemTree
