#include "results/graph/GraphDataRecord.h"

#include "core/common/ConvertionHelper.h"
#include "results/NumericAssessment.h"

#include <utility>
#include <vector>

namespace ZemTree {

GraphDataRecord::GraphDataRecord(double value, const std::string& measurment,
                                 std::shared_ptr<NumericAssessment> assessment)
    : _value(value), _result(std::vector<std::string>{measurment}, std::move(assessment))
{
}

GraphDataRecord::GraphDataRecord(double value, double measurment, std::shared_ptr<NumericAssessment> assessment)
    : GraphDataRecord(value, Zem::convertToString<double, true>(measurment, 2), std::move(assessment))
{
}

} // namespace ZemTree
