#pragma once

#include "core/common/Point.h"
#include "results/ResultBase.h"

#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

class GraphDataTable;
class IGraphManager;

// The immutable outcome of measuring one curve: the points as measured and the tables that the manager built from
// them once, in the constructor. The first table decides the state.
class ResultGraph : public ResultBase {
public:
    // Nothing measured: no points, no manager, state Empty.
    ResultGraph();
    // No points, no manager, state Error with `errorMessage` as its description.
    explicit ResultGraph(const std::string& errorMessage);
    // No points: Empty. Points without a manager: Error. Otherwise the state of the manager's first table, or
    // Error when it gives none; the message is empty.
    ResultGraph(const std::vector<Zem::Point>& points, std::shared_ptr<IGraphManager> manager);

    // May be null; not owned by the caller.
    IGraphManager* getManager() const { return _manager.get(); }
    const std::shared_ptr<IGraphManager>& getManagerPointer() const { return _manager; }
    std::vector<Zem::Point> getPointCollection() const { return _points; }
    std::vector<std::shared_ptr<GraphDataTable>> getDataTables() const { return _dataTables; }

private:
    std::vector<Zem::Point> _points;
    std::shared_ptr<IGraphManager> _manager;
    std::vector<std::shared_ptr<GraphDataTable>> _dataTables;
};

} // namespace ZemTree
