#include "core/tree/ToleranceHelper.h"

#include "core/tree/Tolerance.h"
#include "core/tree/ToleranceReduced.h"

namespace ZemTree {

std::shared_ptr<ToleranceReduced> ToleranceHelper::reduce(const Tolerance* tolerance, double value)
{
    if (tolerance == nullptr)
        return std::make_shared<ToleranceReduced>(ToleranceReduced::Zero());
    return reduce(*tolerance, value);
}

std::shared_ptr<ToleranceReduced> ToleranceHelper::reduce(const Tolerance& tolerance, double value)
{
    const ToleranceItem* lowest = nullptr;
    const ToleranceItem* highest = nullptr;
    for (const ToleranceItem* item : tolerance) {
        const RangeStructure& argument = item->getArgument();
        if (argument.contains(value))
            return std::make_shared<ToleranceReduced>(item->getReduced());
        if (argument.isEmpty())
            continue;
        if (lowest == nullptr || argument.getLow() < lowest->getArgument().getLow())
            lowest = item;
        if (highest == nullptr || argument.getHigh() > highest->getArgument().getHigh())
            highest = item;
    }
    if (lowest != nullptr && value < lowest->getArgument().getLow())
        return std::make_shared<ToleranceReduced>(lowest->getReduced());
    if (highest != nullptr && value > highest->getArgument().getHigh())
        return std::make_shared<ToleranceReduced>(highest->getReduced());
    return std::make_shared<ToleranceReduced>(ToleranceReduced::Zero());
}

} // namespace ZemTree
