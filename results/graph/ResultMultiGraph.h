#pragma once

#include "core/common/Point.h"
#include "results/ResultBase.h"
#include "results/graph/ResultGraph.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

class IGraphManager;

// Several curves measured by one test, keyed by their display names, all judged by one shared manager, with the
// curves' states folded into one (ResultStateFold): a curve without points makes the whole Error.
class ResultMultiGraph : public ResultBase {
public:
    // An empty result without curves and without a manager.
    ResultMultiGraph();
    // One curve per key, in key order; an empty map gives Error.
    ResultMultiGraph(const std::map<std::string, std::vector<Zem::Point>>& points,
                     std::shared_ptr<IGraphManager> manager);

    // May be null; not owned by the caller.
    IGraphManager* getManager() const { return _manager.get(); }
    const std::shared_ptr<IGraphManager>& getManagerPointer() const { return _manager; }

    // The curves by key, ascending by the bytes of the key.
    std::map<std::string, ResultGraph> _items;

private:
    std::shared_ptr<IGraphManager> _manager;
};

} // namespace ZemTree
