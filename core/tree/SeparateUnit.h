#pragma once

#include "core/tree/Unitable.h"

#include <string>

namespace ZemTree {

// A unit with no value that only separates groups of units in a list; its texts head the group below it.
class SeparateUnit : public Unitable {
public:
    explicit SeparateUnit(const std::string& id = "", const LocalString& description = LocalString::Empty(),
                          const LocalString& secondText = LocalString::Empty());
};

} // namespace ZemTree
