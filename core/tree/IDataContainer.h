#pragma once

#include <string>
#include <typeinfo>

namespace ZemTree {

// A value of a type unknown to the holder, as a formula engine exchanges it.
class IDataContainer {
public:
    virtual ~IDataContainer() = default;
    virtual const std::type_info& getType() const = 0;
    // The address of the held value, of the type `getType()` names.
    virtual const void* getData() const = 0;
    // The text form of the held value; false when the type has none.
    virtual bool tryConvertToString(std::string& out) const = 0;
};

} // namespace ZemTree
