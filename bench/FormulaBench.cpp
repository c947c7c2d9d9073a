#include "core/formula/FormulaEvaluator.h"
#include "core/formula/FormulaParser.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <string>

namespace {

const char* const arithmeticFormula = "({../Settings/Iset} * 1.5 + 0.25) / ({../Settings/Tset} - 2) ^ 2 + abs(-3)";

// Evaluating a parsed arithmetic formula with two references that resolve to numbers: the cost paid on every
// recalculation of a value.
void BM_FormulaEvaluate(benchmark::State& state)
{
    const auto parsed = Formula::FormulaParser::separate(arithmeticFormula);
    const auto iset = Formula::ValueExpression::number(2.0);
    const auto tset = Formula::ValueExpression::number(5.0);
    const Formula::Resolver resolver = [&](const std::string& reference) {
        return reference == "../Settings/Iset" ? iset : tset;
    };
    for (auto _ : state) {
        auto out = Formula::FormulaEvaluator::calculate(parsed.get(), resolver);
        benchmark::DoNotOptimize(out);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FormulaEvaluate);

// Parsing alone: paid once per formula text.
void BM_FormulaParse(benchmark::State& state)
{
    const std::string text = arithmeticFormula;
    for (auto _ : state) {
        auto parsed = Formula::FormulaParser::separate(text);
        benchmark::DoNotOptimize(parsed);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_FormulaParse);

// A long flat sum: parsing and evaluation stay linear in the length of the text.
void BM_FormulaLongSum(benchmark::State& state)
{
    std::string text = "1";
    for (int i = 0; i < state.range(0); ++i)
        text += "+1.5";
    for (auto _ : state) {
        auto parsed = Formula::FormulaParser::separate(text);
        auto out = Formula::FormulaEvaluator::calculate(parsed.get(), Formula::Resolver());
        benchmark::DoNotOptimize(out);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_FormulaLongSum)->Range(8, 8192)->Complexity();

} // namespace
