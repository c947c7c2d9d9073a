// Feeds arbitrary texts to the formula parser and evaluator and checks what they promise: no exception, no
// crash, no hang, and always exactly one of a value and an error, the error a FormulaError placed inside the
// text. References resolve to numbers or texts made from their path. A broken promise stops the run with a trap.
//
// Sources to compile in: core/formula/FormulaParser.cpp, FormulaEvaluator.cpp, ValueExpression.cpp,
// core/tree/ValueErrors.cpp, core/common/TypeHelper.cpp, core/common/StringHelper.cpp.

#include "core/formula/FormulaEvaluator.h"
#include "core/formula/FormulaParser.h"
#include "core/tree/ValueErrors.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace {

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

// Paths of even length give texts, of odd length numbers, the empty path nothing.
std::shared_ptr<Formula::ValueExpression> resolve(const std::string& reference)
{
    if (reference.empty())
        return nullptr;
    if (reference.size() % 2 == 0)
        return Formula::ValueExpression::text(reference);
    return Formula::ValueExpression::number(static_cast<double>(reference.size()) - 2.5);
}

void checkError(const Zem::ErrorPointer& error, std::size_t size)
{
    const auto* formulaError = dynamic_cast<const ZemTree::FormulaError*>(error.get());
    check(formulaError != nullptr);
    check(formulaError->getPosition() <= size);
    check(!formulaError->getMessage().empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const std::shared_ptr<Formula::FormulaParserResult> parsed = Formula::FormulaParser::separate(text);
        check(parsed != nullptr);
        check(parsed->isValid() != (parsed->error != nullptr));
        if (parsed->error != nullptr)
            checkError(parsed->error, size);

        const auto out = Formula::FormulaEvaluator::calculate(parsed.get(), &resolve);
        check((out.value == nullptr) != (out.error == nullptr));
        if (out.error != nullptr)
            checkError(out.error, size);
        else {
            std::string rendered;
            check(out.value->tryConvertToString(rendered));
        }

        // Without a resolver every reference fails, and nothing else changes.
        const auto bare = Formula::FormulaEvaluator::calculate(parsed.get(), Formula::Resolver());
        check((bare.value == nullptr) != (bare.error == nullptr));
        if (parsed->references.empty() && parsed->isValid())
            check((bare.error == nullptr) == (out.error == nullptr));

        // Rewriting the references with themselves gives the text back.
        check(Formula::FormulaParser::replaceReferences(text, [](const std::string& path) { return path; }) == text);
    }
    catch (...) {
        // The parser and the evaluator promise not to throw: any exception is a finding.
        __builtin_trap();
    }
    return 0;
}
