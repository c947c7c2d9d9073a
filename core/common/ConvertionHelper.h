#pragma once

#include "core/common/StringHelper.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <locale>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZemTree {
class Measure;
}

namespace Zem {

// The one text form of the model's small value types: the same in every locale, and read strictly (a text
// converts whole or not at all).
//
// The bool arguments of `convertToString` and `tryConvert` choose the form: `<T, true>` is the number form of an
// integer or a real, `<T, true, true>` the stream form of a class or of a shared pointer to one, and the defaults
// `<T>` the instance of a type without a text form, which throws (writing) or fails (reading). `toText` and
// `fromText` choose the form from the type for templates that do not know it.
//
// The stream form of a class is two members, with the object on the left:
//   void operator>>(std::ostringstream&) const;   // writes the object's text
//   void operator<<(std::istringstream&);         // replaces the object from the stream's whole text (`str()`);
//                                                 // a malformed text sets the stream's badbit

// Makes the object that `tryConvert<std::shared_ptr<T>, true, true>` fills from a text. A class whose fresh object
// is not its default-constructed one specialises this next to its own declaration. Null, so that reading fails,
// for a class without a default constructor and without a specialisation.
template <class T> struct ConvertionObjectFactory {
    static std::shared_ptr<T> create()
    {
        if constexpr (std::is_default_constructible_v<T>)
            return std::make_shared<T>();
        else
            return nullptr;
    }
};

namespace ConvertionDetail {

inline const char* notSupportedText()
{
    return "[ZemCommon/ConvertionHelper] Not supported convertToString type";
}

template <class T> struct IsSharedPtr : std::false_type {
};
template <class T> struct IsSharedPtr<std::shared_ptr<T>> : std::true_type {
};

template <class T, class = void> struct HasStreamOut : std::false_type {
};
template <class T>
struct HasStreamOut<T, std::void_t<decltype(std::declval<const T&>() >> std::declval<std::ostringstream&>())>>
    : std::bool_constant<std::is_class_v<T>> {
};

template <class T, class = void> struct HasStreamIn : std::false_type {
};
template <class T>
struct HasStreamIn<T, std::void_t<decltype(std::declval<T&>() << std::declval<std::istringstream&>())>>
    : std::bool_constant<std::is_class_v<T>> {
};

template <class T> constexpr bool isInteger = std::is_integral_v<T> && !std::is_same_v<T, bool>;

// Every stream of the text forms speaks the classic locale, whatever the global one says.
inline std::ostringstream makeOutStream()
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    return stream;
}

inline std::istringstream makeInStream(const std::string& text)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    return stream;
}

template <class T> std::string integerToString(const T& value)
{
    std::ostringstream stream = makeOutStream();
    // Characters would be written as characters; their text form is their number.
    if constexpr (sizeof(T) == 1)
        stream << static_cast<int>(value);
    else
        stream << value;
    return stream.str();
}

// Reads a whole text with the stream's operator>>; leading blanks are skipped by the stream, anything after the
// number fails.
template <class T> bool extractWhole(const std::string& text, T& value)
{
    if (text.empty())
        return false;
    if constexpr (std::is_floating_point_v<T>) {
        // Plain decimal numbers, by far the most read, go through std::from_chars, which reads them the same way
        // without building a stream. Anything else (names of special values, odd signs) goes the stream's way.
        const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
        if (first != std::string::npos) {
            std::size_t start = first;
            if (text[start] == '+' && start + 1 < text.size() && text[start + 1] != '-')
                ++start;
            const char lead = text[start] == '-' && start + 1 < text.size() ? text[start + 1] : text[start];
            if ((lead >= '0' && lead <= '9') || lead == '.') {
                T read{};
                const char* const end = text.data() + text.size();
                const std::from_chars_result result = std::from_chars(text.data() + start, end, read);
                if (result.ec == std::errc()) {
                    if (result.ptr != end)
                        return false;
                    value = read;
                    return true;
                }
                // Out of range, or no number at all: the stream decides, as it always did.
            }
        }
    }
    std::istringstream stream = makeInStream(text);
    T read{};
    stream >> read;
    if (stream.bad() || stream.fail() || !stream.eof())
        return false;
    value = read;
    return true;
}

template <class T> bool integerFromString(const std::string& text, T& value)
{
    if constexpr (sizeof(T) == 1) {
        using Wide = std::conditional_t<std::is_signed_v<T>, int, unsigned>;
        Wide wide{};
        if (!integerFromString<Wide>(text, wide) || wide < static_cast<Wide>(std::numeric_limits<T>::min())
            || wide > static_cast<Wide>(std::numeric_limits<T>::max()))
            return false;
        value = static_cast<T>(wide);
        return true;
    }
    else {
        if constexpr (std::is_unsigned_v<T>) {
            // The stream would wrap "-1" round to the largest value.
            const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
            if (first != std::string::npos && text[first] == '-')
                return false;
        }
        return extractWhole(text, value);
    }
}

inline std::string doubleToString(double value, int precision)
{
    // Below the floor of the digits kept everything is plain zero, without a sign.
    if (std::pow(10.0, static_cast<double>(precision) - 15.0) > std::fabs(value))
        return "0";
    // On a negative value, NaN or an infinity the logarithm is not a finite number and the arithmetic below gives
    // no valid precision; the stream then keeps its default of 6 significant digits. That is the documented form
    // of such numbers: -1.23456789 is written as "-1.23457".
    double magnitude = std::ceil(std::log10(value));
    int streamPrecision = 6;
    if (std::isfinite(magnitude)) {
        double digits = 15.0;
        if (magnitude < 0.0)
            magnitude = 0.0;
        else
            digits = std::trunc(15.0 - magnitude);
        const double keep = std::min(digits, 15.0 - static_cast<double>(precision));
        const double total = keep + magnitude;
        if (total >= 0.0 && total <= static_cast<double>(std::numeric_limits<int>::max()))
            streamPrecision = static_cast<int>(total);
    }
    // std::to_chars writes what a classic-locale stream with that precision writes (printf's %g), without
    // building a stream.
    char buffer[128];
    const std::to_chars_result result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, streamPrecision);
    if (result.ec == std::errc())
        return std::string(buffer, result.ptr);
    std::ostringstream stream = makeOutStream();
    stream.precision(streamPrecision);
    stream << value;
    return stream.str();
}

struct SpecialFloatingWord {
    const char* word;
    double value;
};

// "infinity" stands before "inf" so that the longer word wins.
inline const std::vector<SpecialFloatingWord>& specialFloatingWords()
{
    static const std::vector<SpecialFloatingWord> words{{"nan", std::numeric_limits<double>::quiet_NaN()},
                                                        {"infinity", std::numeric_limits<double>::infinity()},
                                                        {"inf", std::numeric_limits<double>::infinity()}};
    return words;
}

// The text form of a measure lives beside the measure (core/tree/MeasureTypeConverter.cpp).
std::string measureToText(const ZemTree::Measure* measure);
bool measureFromText(const std::string& text, ZemTree::Measure*& measure);

} // namespace ConvertionDetail

// Reads "nan", "infinity" or "inf" (ASCII case ignored), with an optional leading minus, at `position` of `text`.
// Returns the position behind the word and stores its value, or returns `position` and leaves `value` when none
// stands there.
template <class T> unsigned long tryExtractSpecialFloating(const std::string& text, unsigned long position, T& value)
{
    static_assert(std::is_floating_point_v<T>, "tryExtractSpecialFloating reads floating types");
    if (position >= text.size())
        return position;
    std::size_t start = position;
    const bool negative = text[start] == '-';
    if (negative)
        ++start;
    for (const ConvertionDetail::SpecialFloatingWord& row : ConvertionDetail::specialFloatingWords()) {
        if (StringHelper::isInclude(text, row.word, start, text.size(), true)) {
            // Negation flips the sign bit, of NaN as well.
            value = static_cast<T>(negative ? -row.value : row.value);
            return static_cast<unsigned long>(start + std::char_traits<char>::length(row.word));
        }
    }
    return position;
}

namespace ConvertionDetail {

template <class T> bool floatingFromString(const std::string& text, T& value)
{
    if (text.empty())
        return false;
    if (extractWhole(text, value))
        return true;
    T special = T(0.0);
    if (tryExtractSpecialFloating<T>(text, 0, special) == text.size()) {
        value = special;
        return true;
    }
    return false;
}

// The instance for a type and a choice of form; the primary one is that of a type without a text form.
template <class T, bool Number, bool Streamed, class Enable = void> struct Converter {
    static std::string toString(const T&) { throw std::logic_error(notSupportedText()); }
    static std::string toString(const T&, int) { throw std::logic_error(notSupportedText()); }
    static bool fromString(const std::string&, T&) { return false; }
};

template <class T> struct Converter<T, true, false, std::enable_if_t<isInteger<T>>> {
    static std::string toString(const T& value) { return integerToString(value); }
    static bool fromString(const std::string& text, T& value) { return integerFromString(text, value); }
};

template <class T> struct Converter<T, true, false, std::enable_if_t<std::is_floating_point_v<T>>> {
    static std::string toString(const T& value, int precision = 0)
    {
        return doubleToString(static_cast<double>(value), precision);
    }
    static bool fromString(const std::string& text, T& value) { return floatingFromString(text, value); }
};

template <> struct Converter<bool, true, false> {
    static std::string toString(const bool& value) { return value ? "true" : "false"; }
    // "1" and "0" are read as well, as older files wrote flags as numbers.
    static bool fromString(const std::string& text, bool& value)
    {
        if (text == "true" || text == "1") {
            value = true;
            return true;
        }
        if (text == "false" || text == "0") {
            value = false;
            return true;
        }
        return false;
    }
};

template <> struct Converter<std::string, true, false> {
    static std::string toString(const std::string& value) { return value; }
    static bool fromString(const std::string& text, std::string& value)
    {
        value = text;
        return true;
    }
};

template <class T> struct Converter<T, true, true, std::enable_if_t<!IsSharedPtr<T>::value>> {
    static std::string toString(const T& object)
    {
        if constexpr (HasStreamOut<T>::value) {
            std::ostringstream stream = makeOutStream();
            object >> stream;
            return stream.str();
        }
        else {
            throw std::logic_error(notSupportedText());
        }
    }
    static bool fromString(const std::string& text, T& object)
    {
        if constexpr (HasStreamIn<T>::value && std::is_copy_assignable_v<T>) {
            const std::shared_ptr<T> fresh = ConvertionObjectFactory<T>::create();
            if (!fresh)
                return false;
            std::istringstream stream = makeInStream(text);
            *fresh << stream;
            if (stream.bad() || (!text.empty() && stream.fail()))
                return false;
            object = *fresh;
            return true;
        }
        else {
            return false;
        }
    }
};

template <class T> struct Converter<std::shared_ptr<T>, true, true> {
    // A null pointer has the empty text.
    static std::string toString(const std::shared_ptr<T>& pointer)
    {
        if (!pointer)
            return std::string();
        return Converter<std::remove_const_t<T>, true, true>::toString(*pointer);
    }
    static bool fromString(const std::string& text, std::shared_ptr<T>& pointer)
    {
        using Object = std::remove_const_t<T>;
        if constexpr (HasStreamIn<Object>::value) {
            std::shared_ptr<Object> fresh = ConvertionObjectFactory<Object>::create();
            if (!fresh)
                return false;
            std::istringstream stream = makeInStream(text);
            *fresh << stream;
            // An empty text leaves the stream at its end, which may have set failbit without meaning a fault.
            const bool good = text.empty() ? !stream.bad() : !(stream.bad() || stream.fail());
            if (!good)
                return false;
            pointer = std::move(fresh);
            return true;
        }
        else {
            return false;
        }
    }
};

} // namespace ConvertionDetail

template <class T, bool Number = false, bool Streamed = false> std::string convertToString(const T& value)
{
    return ConvertionDetail::Converter<T, Number, Streamed>::toString(value);
}

// The real form: `precision` is how many of the 15 significant digits are given up behind the point.
template <class T, bool Number = false, bool Streamed = false>
std::string convertToString(const T& value, int precision)
{
    return ConvertionDetail::Converter<T, Number, Streamed>::toString(value, precision);
}

// Stores into `value` and returns true only when the whole text converts; otherwise `value` stays.
template <class T, bool Number = false, bool Streamed = false> bool tryConvert(const std::string& text, T& value)
{
    return ConvertionDetail::Converter<T, Number, Streamed>::fromString(text, value);
}

// Splits at every delimiter, empty pieces included: "" gives one empty piece, "a|b|" gives "a", "b", "".
template <class T> std::vector<T> splitConvert(const std::string& text, char delimiter)
{
    static_assert(std::is_same_v<T, std::string>, "splitConvert splits into texts");
    std::vector<std::string> pieces;
    if (text.empty()) {
        pieces.emplace_back();
        return pieces;
    }
    std::istringstream stream = ConvertionDetail::makeInStream(text);
    std::string piece;
    while (std::getline(stream, piece, delimiter))
        pieces.push_back(piece);
    if (text.back() == delimiter)
        pieces.emplace_back();
    return pieces;
}

// The text of any value whose type has a text form: integers and reals as numbers (reals with precision 0),
// texts as they are, flags as "true"/"false", enumerations as their number, measures by their key, classes
// with a stream form and shared pointers to them through it. Throws std::logic_error for a type without one.
template <class T> std::string toText(const T& value)
{
    using namespace ConvertionDetail;
    if constexpr (std::is_same_v<T,
                                 std::string> || std::is_same_v<T, bool> || isInteger<T> || std::is_floating_point_v<T>)
        return Converter<T, true, false>::toString(value);
    else if constexpr (std::is_enum_v<T>)
        return integerToString(static_cast<std::underlying_type_t<T>>(value));
    else if constexpr (std::is_pointer_v<
                           T> && std::is_same_v<std::remove_cv_t<std::remove_pointer_t<T>>, ZemTree::Measure>)
        return measureToText(value);
    else if constexpr (IsSharedPtr<T>::value || HasStreamOut<T>::value)
        return Converter<T, true, true>::toString(value);
    else
        throw std::logic_error(notSupportedText());
}

// The inverse of `toText`: stores into `value` and returns true only when the whole text converts; false for a
// type without a text form. A measure is found by its key; the empty text gives null.
template <class T> bool fromText(const std::string& text, T& value)
{
    using namespace ConvertionDetail;
    if constexpr (std::is_same_v<T,
                                 std::string> || std::is_same_v<T, bool> || isInteger<T> || std::is_floating_point_v<T>)
        return Converter<T, true, false>::fromString(text, value);
    else if constexpr (std::is_enum_v<T>) {
        std::underlying_type_t<T> number{};
        if (!integerFromString(text, number))
            return false;
        value = static_cast<T>(number);
        return true;
    }
    else if constexpr (std::is_same_v<T, ZemTree::Measure*>)
        return measureFromText(text, value);
    else if constexpr (IsSharedPtr<T>::value || HasStreamIn<T>::value)
        return Converter<T, true, true>::fromString(text, value);
    else
        return false;
}

} // namespace Zem
