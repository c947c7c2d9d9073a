#pragma once

#include "core/tree/TypedProperty.h"

#include <string>

namespace ZemTree {

// A text property, such as the channel family of a contact unit. A read-only one is not editable by the user;
// code still sets it.
class StringProperty : public TypedProperty<std::string> {
public:
    explicit StringProperty(const std::string& id = "", const LocalString& description = LocalString::Empty(),
                            const LocalString& secondText = LocalString::Empty(), const std::string& value = "",
                            bool readOnly = false);

    bool isReadOnly() const { return _isReadOnly; }

private:
    bool _isReadOnly;
};

} // namespace ZemTree
