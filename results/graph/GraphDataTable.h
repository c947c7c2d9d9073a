#pragma once

#include "results/ResultState.h"

#include <memory>
#include <vector>

namespace ZemTree {

class GraphDataHeader;
class GraphDataRecord;

// The judged rows of one curve as a graph manager sees it, with the header of their columns.
class GraphDataTable {
public:
    // A null header is replaced by one with empty texts and no measures, so the header is never null.
    explicit GraphDataTable(const std::shared_ptr<GraphDataHeader>& header);

    std::shared_ptr<GraphDataHeader> getHeader() const { return _header; }
    // Error without records; otherwise the state of the first record that is not Ok (Error for a null record), or Ok.
    ResultState getState() const;

    // The rows in the order of the points.
    std::vector<std::shared_ptr<GraphDataRecord>> _records;

private:
    std::shared_ptr<GraphDataHeader> _header;
};

} // namespace ZemTree
