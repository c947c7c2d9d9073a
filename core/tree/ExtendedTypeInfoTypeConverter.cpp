#include "core/tree/ExtendedTypeInfoTypeConverter.h"

namespace ZemTree {

std::string ExtendedTypeInfoTypeConverter::toStringData(const ExtendedTypeInfo& info)
{
    if (info.getQualifier().empty())
        return info.getTypeName();
    return info.getTypeName() + '#' + info.getQualifier();
}

ExtendedTypeInfo ExtendedTypeInfoTypeConverter::fromStringData(const std::string& text)
{
    const std::size_t separator = text.find('#');
    if (separator == std::string::npos)
        return ExtendedTypeInfo(text);
    return ExtendedTypeInfo(text.substr(0, separator), text.substr(separator + 1));
}

} // namespace ZemTree
