#pragma once

#include "core/tree/TypedProperty.h"

#include <string>

namespace ZemTree {

// A number property, such as the group count of a redirect unit. Saved in the locale-free real form with all
// 15 significant digits.
class NumericProperty : public TypedProperty<double> {
public:
    explicit NumericProperty(const std::string& id = "", const LocalString& description = LocalString::Empty(),
                             const LocalString& secondText = LocalString::Empty(), double value = 0.0);
};

} // namespace ZemTree
