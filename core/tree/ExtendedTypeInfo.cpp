#include "core/tree/ExtendedTypeInfo.h"

#include "core/common/TypeHelper.h"

#include <stdexcept>

namespace ZemTree {

ExtendedTypeInfo::ExtendedTypeInfo(const std::string& typeName, const std::string& qualifier)
    : _typeName(typeName), _qualifier(qualifier)
{
    if (typeName.find('#') != std::string::npos)
        throw std::logic_error("A type name cannot contain '#': " + typeName);
}

ExtendedTypeInfo ExtendedTypeInfo::fromType(const std::type_info& type, const std::string& qualifier)
{
    return ExtendedTypeInfo(Zem::TypeHelper::getTypeName(type), qualifier);
}

bool ExtendedTypeInfo::operator==(const ExtendedTypeInfo& other) const
{
    return _typeName == other._typeName && _qualifier == other._qualifier;
}

} // namespace ZemTree
