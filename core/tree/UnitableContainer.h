#pragma once

#include "core/tree/ExtendedTypeInfo.h"
#include "core/tree/Unitable.h"

#include <string>

namespace ZemTree {

// A unit that holds other nodes and tells what kind of container it is.
class UnitableContainer : public Unitable {
public:
    explicit UnitableContainer(const std::string& id = "", const LocalString& description = LocalString::Empty(),
                               const LocalString& secondText = LocalString::Empty());

    // The type of this container; by default its own dynamic type.
    virtual ExtendedTypeInfo getExtendedTypeInfo() const;
};

} // namespace ZemTree
