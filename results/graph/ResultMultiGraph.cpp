#include "results/graph/ResultMultiGraph.h"

#include "results/ResultStateFold.h"
#include "results/graph/IGraphManager.h"

#include <utility>

namespace ZemTree {

ResultMultiGraph::ResultMultiGraph() = default;

ResultMultiGraph::ResultMultiGraph(const std::map<std::string, std::vector<Zem::Point>>& points,
                                   std::shared_ptr<IGraphManager> manager)
{
    for (const auto& entry : points)
        _items.emplace(entry.first, ResultGraph(entry.second, manager));
    const ResultStateFold folded = ResultStateFold::fold(_items);
    _setState(folded.getState(), folded.getMessage());
    _manager = std::move(manager);
}

} // namespace ZemTree
