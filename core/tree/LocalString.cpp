#include "core/tree/LocalString.h"

#include "core/tree/TreeLocalization.h"

namespace ZemTree {

LocalString::LocalString(const char* text) : _text(text != nullptr ? text : "") {}

LocalString::LocalString(const std::string& text) : _text(text) {}

const LocalString& LocalString::Empty()
{
    static const LocalString empty;
    return empty;
}

LocalString LocalString::create(const std::string& english, const std::string& russian)
{
    // English is the plain text, so any language without its own entry falls back to it.
    LocalString result(english);
    if (!russian.empty())
        result._values["ru"] = russian;
    return result;
}

void LocalString::setValue(const std::string& value, const std::string& language)
{
    _values[language.empty() ? getCurrentLanguageKey() : language] = value;
}

std::string LocalString::getValue(const std::string& language) const
{
    const std::string key = language.empty() ? getCurrentLanguageKey() : language;
    const auto found = _values.find(key);
    return found != _values.end() ? found->second : _text;
}

std::string LocalString::getCurrentLanguageKey()
{
    return lng::language == 1 ? "ru" : "en";
}

bool LocalString::empty() const
{
    if (!_text.empty())
        return false;
    for (const auto& entry : _values) {
        if (!entry.second.empty())
            return false;
    }
    return true;
}

bool LocalString::operator==(const LocalString& other) const
{
    return _text == other._text && _values == other._values;
}

} // namespace ZemTree
