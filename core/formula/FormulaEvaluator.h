#pragma once

#include "core/common/Out.h"
#include "core/formula/FormulaParserResult.h"
#include "core/formula/ValueExpression.h"

#include <functional>
#include <memory>
#include <string>

namespace Formula {

// Gives the value of a reference, named by its path; null when the reference does not resolve. A resolver may
// also throw std::exception to say why a reference has no value: the text becomes part of the formula's error.
using Resolver = std::function<std::shared_ptr<ValueExpression>(const std::string& reference)>;

// Evaluates parsed formulas.
//
// Arithmetic needs numbers: a text that reads whole as a number counts as that number; an object counts by its
// data when it holds a double or a text, otherwise through its text form. '+' of two texts joins them. Division by
// zero gives an infinity or NaN, as IEEE arithmetic does. A formula that is a single reference gives the
// resolver's value itself, whatever its kind.
class FormulaEvaluator {
public:
    FormulaEvaluator() = delete;

    // The value of `parsed`, with the resolver asked at most once per distinct reference. On failure `value` is
    // null and `error` a ZemTree::FormulaError naming the problem and its position. Never throws.
    static Zem::Out<std::shared_ptr<ValueExpression>> calculate(FormulaParserResult* parsed, const Resolver& resolver);
};

} // namespace Formula
