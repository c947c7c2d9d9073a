#include "core/common/TypeHelper.h"

#include <cctype>
#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace Zem {

namespace {

bool isNameChar(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '$';
}

// Removes from the end of `text` one qualifier component: a name with its template arguments, or a
// parenthesised part such as "(anonymous namespace)". Brackets are matched, so nested arguments go whole.
void dropLastComponent(std::string& text)
{
    std::size_t end = text.size();
    if (end > 0 && (text[end - 1] == '>' || text[end - 1] == ')')) {
        const char close = text[end - 1];
        const char open = close == '>' ? '<' : '(';
        int depth = 0;
        while (end > 0) {
            const char c = text[--end];
            if (c == close)
                ++depth;
            else if (c == open && --depth == 0)
                break;
        }
    }
    while (end > 0 && isNameChar(text[end - 1]))
        --end;
    text.resize(end);
}

} // namespace

std::string TypeHelper::getTypeName(const std::type_info& type)
{
    const char* const mangled = type.name();
    int status = 0;
    // The demangler allocates with malloc; free it whatever happens next.
    const std::unique_ptr<char, void (*)(void*)> demangled(abi::__cxa_demangle(mangled, nullptr, nullptr, &status),
                                                           std::free);
    if (status != 0 || !demangled)
        return std::string(mangled);
    return std::string(demangled.get());
}

std::string TypeHelper::getShortTypeName(const std::type_info& type)
{
    return stripQualifiers(getTypeName(type));
}

std::string TypeHelper::stripQualifiers(const std::string& typeName)
{
    std::string result;
    result.reserve(typeName.size());
    for (std::size_t i = 0; i < typeName.size(); ++i) {
        if (typeName[i] == ':' && i + 1 < typeName.size() && typeName[i + 1] == ':') {
            dropLastComponent(result);
            ++i;
            continue;
        }
        result += typeName[i];
    }
    return result;
}

} // namespace Zem
