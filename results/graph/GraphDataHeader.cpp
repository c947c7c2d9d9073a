#include "results/graph/GraphDataHeader.h"

namespace ZemTree {

GraphDataHeader::GraphDataHeader(const std::string& name, const std::string& descriptionX, Measure* measureX,
                                 const std::string& descriptionY, Measure* measureY)
    : _name(name), _descriptionX(descriptionX), _measureX(measureX), _descriptionY(descriptionY), _measureY(measureY)
{
}

} // namespace ZemTree
