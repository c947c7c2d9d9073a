#pragma once

#include <string>
#include <typeinfo>

namespace Zem {

// Readable, stable names of C++ types: keys of the node and manager factories, type words of reports.
class TypeHelper {
public:
    TypeHelper() = delete;

    // The demangled full name, e.g. "ZemTree::UniversalGeneralContainer" or "Zem::Foo<int, ZemTree::Bar>".
    // The same type gives the same text in every run, so the text may be saved in files.
    static std::string getTypeName(const std::type_info& type);
    // The name without namespace or class qualifiers, also inside template arguments:
    // "Zem::Foo<int, ZemTree::Bar>" gives "Foo<int, Bar>".
    static std::string getShortTypeName(const std::type_info& type);

    template <class T> static std::string getTypeName() { return getTypeName(typeid(T)); }
    template <class T> static std::string getShortTypeName() { return getShortTypeName(typeid(T)); }

    // Drops every qualifier ("a::b::" before a name) from a demangled type name.
    static std::string stripQualifiers(const std::string& typeName);
};

} // namespace Zem
