// Feeds arbitrary texts to the locale-free conversions and checks the properties they promise. The first byte
// of an input is the delimiter for splitting; the rest is the text. A broken promise stops the run with a trap.

#include "core/common/ConvertionHelper.h"

#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

namespace {

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string lower(std::string text)
{
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

// What the strict integer reading must accept: blanks, an optional sign, digits to the end, within range.
bool expectedLong(const std::string& text, long& value)
{
    std::size_t i = 0;
    while (i < text.size() && isBlank(text[i]))
        ++i;
    std::size_t digits = i;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-'))
        ++digits;
    if (digits == text.size())
        return false;
    for (std::size_t j = digits; j < text.size(); ++j) {
        if (!isDigit(text[j]))
            return false;
    }
    errno = 0;
    const long long parsed = std::strtoll(text.c_str() + i, nullptr, 10);
    if (errno == ERANGE || parsed < std::numeric_limits<long>::min() || parsed > std::numeric_limits<long>::max())
        return false;
    value = static_cast<long>(parsed);
    return true;
}

void checkLong(const std::string& text)
{
    long value = 4242;
    const bool converted = Zem::tryConvert<long, true>(text, value);
    long expected = 0;
    const bool accepted = expectedLong(text, expected);
    check(converted == accepted);
    if (!converted) {
        check(value == 4242);
        return;
    }
    check(value == expected);
    long again = 0;
    check((Zem::tryConvert<long, true>(Zem::convertToString<long, true>(value), again)) && again == value);
}

// Writing and reading back a real keeps 15 significant digits (6 for a negative number) and is stable: the
// text of the value read back is the same text.
void checkRealRoundTrip(double value, int precision)
{
    const std::string text = Zem::convertToString<double, true>(value, precision);
    check(!text.empty() && text.find(',') == std::string::npos);
    double read = 0.0;
    const bool converted = Zem::tryConvert<double, true>(text, read);
    if (std::isnan(value)) {
        check(converted && std::isnan(read));
        return;
    }
    if (std::isinf(value)) {
        check(converted && read == value);
        return;
    }
    if (text == "0") {
        check(std::fabs(value) < std::pow(10.0, precision - 15.0) * (1.0 + 1e-12));
        check(converted && read == 0.0);
        return;
    }
    // The 15-digit text of the very largest doubles lies above the largest double and does not read back.
    if (!converted) {
        check(std::fabs(value) > 1.797693134862315e308);
        return;
    }
    const double tolerance = value < 0.0 ? 1e-5 : 1e-14;
    if (precision == 0)
        check(std::fabs(read - value) <= std::fabs(value) * tolerance);
    check((Zem::convertToString<double, true>(read, precision)) == text);
}

bool isSpecialWord(const std::string& text)
{
    const std::string word = lower(text);
    const std::string bare = !word.empty() && word[0] == '-' ? word.substr(1) : word;
    return bare == "nan" || bare == "inf" || bare == "infinity";
}

void checkDouble(const std::string& text)
{
    double value = 4242.0;
    const bool converted = Zem::tryConvert<double, true>(text, value);
    if (isSpecialWord(text))
        check(converted);
    if (!converted) {
        check(value == 4242.0);
        return;
    }
    check(!text.empty() && !isBlank(text.back()));
    if (std::isnan(value) || std::isinf(value))
        check(isSpecialWord(text));
    checkRealRoundTrip(value, 0);
    checkRealRoundTrip(value, 2);
}

void checkSpecialAt(const std::string& text, unsigned long position)
{
    double value = 4242.0;
    const unsigned long end = Zem::tryExtractSpecialFloating<double>(text, position, value);
    if (end == position) {
        check(value == 4242.0);
        return;
    }
    check(end > position && end <= text.size());
    const std::string word = lower(text.substr(position, end - position));
    check(isSpecialWord(word));
    const bool negative = word[0] == '-';
    check(std::signbit(value) == negative);
    if (word.find("nan") != std::string::npos) {
        check(std::isnan(value));
        return;
    }
    check(std::isinf(value));
    // The longer word wins.
    if (word == "inf" || word == "-inf")
        check(lower(text.substr(position, word.size() + 5)) != word + "inity");
}

void checkSplit(const std::string& text, char delimiter)
{
    const std::vector<std::string> pieces = Zem::splitConvert<std::string>(text, delimiter);
    std::size_t delimiters = 0;
    for (const char c : text)
        delimiters += c == delimiter ? 1 : 0;
    check(pieces.size() == delimiters + 1);
    std::string joined;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0)
            joined += delimiter;
        joined += pieces[i];
    }
    check(joined == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0 || size > 4096)
        return 0;
    const char delimiter = static_cast<char>(data[0]);
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);

    checkLong(text);
    checkDouble(text);
    checkSplit(text, delimiter);
    for (unsigned long position = 0; position <= text.size() + 1; ++position)
        checkSpecialAt(text, position);
    return 0;
}
