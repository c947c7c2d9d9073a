#include "results/graph/ResultGraph.h"

#include "results/graph/GraphDataTable.h"
#include "results/graph/IGraphManager.h"

#include <utility>

namespace ZemTree {

ResultGraph::ResultGraph() = default;

ResultGraph::ResultGraph(const std::string& errorMessage)
{
    _setState(ResultState::Error, errorMessage);
}

ResultGraph::ResultGraph(const std::vector<Zem::Point>& points, std::shared_ptr<IGraphManager> manager)
    : _points(points), _manager(std::move(manager))
{
    if (_points.empty())
        return;
    if (!_manager) {
        _setState(ResultState::Error, "");
        return;
    }
    _dataTables = _manager->getDataTables(_points);
    // The manager's settings decide, through its first table alone.
    if (_dataTables.empty() || !_dataTables.front())
        _setState(ResultState::Error, "");
    else
        _setState(_dataTables.front()->getState(), "");
}

} // namespace ZemTree
