#include "results/graph/GraphDataTable.h"

#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphDataRecord.h"

namespace ZemTree {

GraphDataTable::GraphDataTable(const std::shared_ptr<GraphDataHeader>& header) : _header(header)
{
    if (!_header)
        _header = std::make_shared<GraphDataHeader>("", "", nullptr, "", nullptr);
}

ResultState GraphDataTable::getState() const
{
    if (_records.empty())
        return ResultState::Error;
    for (const std::shared_ptr<GraphDataRecord>& record : _records) {
        // A hole in the table is as unusable as a record with bad data.
        if (!record)
            return ResultState::Error;
        const ResultState state = record->getResult().getState();
        if (state != ResultState::Ok)
            return state;
    }
    return ResultState::Ok;
}

} // namespace ZemTree
