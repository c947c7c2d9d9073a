#pragma once

#include "core/tree/ExtendedTypeInfo.h"

#include <string>

namespace ZemTree {

// The one-line text form of ExtendedTypeInfo: the type name, then '#' and the qualifier when there is one.
// An undefined info without qualifier is the empty text.
class ExtendedTypeInfoTypeConverter {
public:
    ExtendedTypeInfoTypeConverter() = delete;

    static std::string toStringData(const ExtendedTypeInfo& info);
    // Never throws: the text before the first '#' is the type name, all after it the qualifier.
    static ExtendedTypeInfo fromStringData(const std::string& text);
};

} // namespace ZemTree
