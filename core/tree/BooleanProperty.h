#pragma once

#include "core/tree/TypedProperty.h"

#include <string>

namespace ZemTree {

// A flag property, such as the enable state of a contact unit. Saved as "true" or "false".
class BooleanProperty : public TypedProperty<bool> {
public:
    explicit BooleanProperty(const std::string& id = "", const LocalString& description = LocalString::Empty(),
                             const LocalString& secondText = LocalString::Empty(), bool value = false);
};

} // namespace ZemTree
