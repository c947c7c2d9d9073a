#pragma once

#include <string>
#include <typeinfo>

namespace ZemTree {

// Names a node type in a form that survives saving: the full type name, optionally refined by a qualifier
// (for instance the value type a generic container is made for). An undefined info has no type name.
class ExtendedTypeInfo {
public:
    ExtendedTypeInfo() = default;
    // Throws std::logic_error when `typeName` contains the separator '#', which the text form reserves.
    explicit ExtendedTypeInfo(const std::string& typeName, const std::string& qualifier = "");

    // The info of T, named as Zem::TypeHelper::getTypeName names it.
    template <class T> static ExtendedTypeInfo of(const std::string& qualifier = "")
    {
        return fromType(typeid(T), qualifier);
    }
    static ExtendedTypeInfo fromType(const std::type_info& type, const std::string& qualifier = "");

    const std::string& getTypeName() const { return _typeName; }
    const std::string& getQualifier() const { return _qualifier; }

    bool isDefined() const { return !_typeName.empty(); }

    bool operator==(const ExtendedTypeInfo& other) const;
    bool operator!=(const ExtendedTypeInfo& other) const { return !(*this == other); }

private:
    std::string _typeName;
    std::string _qualifier;
};

} // namespace ZemTree
