#pragma once

#include "core/formula/FormulaParserResult.h"

#include <functional>
#include <memory>
#include <string>

namespace Formula {

// Parses the formula language of values and units, a small expression language of numbers, texts and node
// references:
//
//   formula   := sum
//   sum       := product (('+' | '-') product)*
//   product   := unary (('*' | '/') unary)*
//   unary     := ('-' | '+') unary | power          so that -2^2 is -4
//   power     := primary ('^' unary)?              right-associative: 2^3^2 is 2^9
//   primary   := number | text | reference | name '(' [sum (',' sum)*] ')' | constant | '(' sum ')'
//
// - number: classic-locale decimal with optional exponent: "1", "1.5", ".5", "1e-3", "2.5E+2";
// - constant: "nan", "inf", "infinity" (case ignored);
// - text: double quotes, with \" and \\ as the only escapes;
// - reference: "{path}", the path up to the next '}' as NodePathHelper reads it; a resolver gives its value;
// - name: abs sqrt exp ln log10 pow min max sin cos tan atan2 round (case ignored); pow and atan2 take two
//   arguments, min and max one or more, round one or two (the second is the number of digits), the rest one.
//
// Blanks between tokens are ignored. Nesting deeper than `MaxDepth` is refused with an error instead of
// exhausting the stack. Positions in errors are byte offsets into the text, counted from 0.
class FormulaParser {
public:
    static constexpr std::size_t MaxDepth = 256;

    FormulaParser() = delete;

    // Never throws (short of memory): a syntax error is kept in the result.
    static std::shared_ptr<FormulaParserResult> separate(std::string text);

    // The text with the path of every reference replaced by what `replace` makes of it; texts in quotes are left
    // alone, and an unterminated reference or text stays as it is. The rest of the text is copied unchanged.
    static std::string replaceReferences(const std::string& text,
                                         const std::function<std::string(const std::string&)>& replace);
};

} // namespace Formula
