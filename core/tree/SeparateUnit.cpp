#include "core/tree/SeparateUnit.h"

namespace ZemTree {

namespace {

// Users add these below open sections, so a reader must be able to rebuild them.
} // namespace

SeparateUnit::SeparateUnit(const std::string& id, const LocalString& description, const LocalString& secondText)
    : Unitable(id, description, secondText)
{
}

} // namespace ZemTree
