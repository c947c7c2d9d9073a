#include "core/common/StringHelper.h"

#include <algorithm>

namespace Zem {

namespace {

// ASCII only on purpose: <cctype> would follow the global locale.
char asciiLower(char c)
{
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

char asciiUpper(char c)
{
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

} // namespace

std::vector<std::string> StringHelper::split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::size_t begin = 0;
    while (true) {
        const std::size_t found = text.find(separator, begin);
        if (found == std::string::npos) {
            parts.push_back(text.substr(begin));
            return parts;
        }
        parts.push_back(text.substr(begin, found - begin));
        begin = found + 1;
    }
}

std::string StringHelper::replaceAll(const std::string& text, const std::string& pattern,
                                     const std::string& replacement)
{
    if (pattern.empty())
        return text;
    std::string result;
    result.reserve(text.size());
    std::size_t begin = 0;
    while (true) {
        const std::size_t found = text.find(pattern, begin);
        if (found == std::string::npos) {
            result.append(text, begin, std::string::npos);
            return result;
        }
        result.append(text, begin, found - begin);
        result += replacement;
        begin = found + pattern.size();
    }
}

bool StringHelper::isInclude(const std::string& text, const std::string& pattern, std::size_t position, std::size_t end,
                             bool ignoreCase)
{
    const std::size_t limit = std::min(end, text.size());
    // Written so that no sum can overflow, whatever `position` a caller passes.
    if (position > limit || pattern.size() > limit - position)
        return false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char a = text[position + i];
        const char b = pattern[i];
        if (ignoreCase ? asciiLower(a) != asciiLower(b) : a != b)
            return false;
    }
    return true;
}

std::string StringHelper::trim(const std::string& text)
{
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    return text.substr(begin, end - begin);
}

std::string StringHelper::toLower(const std::string& text)
{
    std::string result = text;
    std::transform(result.begin(), result.end(), result.begin(), asciiLower);
    return result;
}

std::string StringHelper::toUpper(const std::string& text)
{
    std::string result = text;
    std::transform(result.begin(), result.end(), result.begin(), asciiUpper);
    return result;
}

bool StringHelper::startsWith(const std::string& text, const std::string& prefix)
{
    return text.size() >= prefix.size() && text.compare(0, prefix.size(), prefix) == 0;
}

bool StringHelper::endsWith(const std::string& text, const std::string& suffix)
{
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

} // namespace Zem
