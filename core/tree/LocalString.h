#pragma once

#include <string>
#include <unordered_map>

namespace ZemTree {

// A text for the user with its own value per language. The plain text serves every language that has no
// value of its own, so a string made from one text reads the same in English and in Russian.
class LocalString {
public:
    LocalString() = default;
    // Implicit on purpose: a literal or a plain text serves wherever a LocalString is expected.
    LocalString(const char* text);
    LocalString(const std::string& text);

    // A shared empty string, handy as a default argument.
    static const LocalString& Empty();
    // An English and a Russian text; an empty Russian text lets the English one serve both.
    static LocalString create(const std::string& english, const std::string& russian);

    // Sets the text of one language ("en", "ru"); "" means the current language. The plain text, which serves
    // the languages without a text of their own, is what the string was made from.
    void setValue(const std::string& value, const std::string& language);
    // The text of `language`, or the plain text when that language has none; "" means the current language.
    std::string getValue(const std::string& language = "") const;

    // The key of lng::language: "en" for 0, "ru" for 1.
    static std::string getCurrentLanguageKey();

    // The texts of the languages that have their own value.
    const std::unordered_map<std::string, std::string>& getValues() const { return _values; }
    // The text that serves a language without its own value.
    const std::string& getPlainText() const { return _text; }

    // True when no language has any text.
    bool empty() const;
    bool operator==(const LocalString& other) const;
    bool operator!=(const LocalString& other) const { return !(*this == other); }

private:
    std::unordered_map<std::string, std::string> _values;
    std::string _text;
};

} // namespace ZemTree
