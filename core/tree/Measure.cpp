#include "core/tree/Measure.h"

#include "core/tree/TreeLocalization.h"

namespace ZemTree {

Measure::Measure(const std::string& key, const std::string& english, const std::string& russian)
    : _key(key), _descriptions{english, russian}
{
}

const std::string& Measure::getDescription() const
{
    return _descriptions[lng::language == 1 ? 1 : 0];
}

} // namespace ZemTree
