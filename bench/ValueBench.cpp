#include "values/Unit.h"

#include <benchmark/benchmark.h>
#include <cstddef>

namespace {

// A data change with one listener: the value out is computed once at the change, and the reading after it hits
// the cache.
void BM_UnitSetDataWithListenerThenRead(benchmark::State& state)
{
    ZemTree::Unit<double> unit("Bench", ZemTree::LocalString::Empty(), ZemTree::LocalString::Empty(), 0.0);
    std::size_t heard = 0;
    unit.signalValueOutChanged.connect([&heard] { ++heard; });
    double next = 0.0;
    for (auto _ : state) {
        next += 1.0;
        unit.setData(next);
        benchmark::DoNotOptimize(unit.getValueOut().value);
    }
    benchmark::DoNotOptimize(heard);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_UnitSetDataWithListenerThenRead);

// A data change nobody listens to only drops the cache; the reading after it computes.
void BM_UnitSetDataWithoutListenerThenRead(benchmark::State& state)
{
    ZemTree::Unit<double> unit("Bench", ZemTree::LocalString::Empty(), ZemTree::LocalString::Empty(), 0.0);
    double next = 0.0;
    for (auto _ : state) {
        next += 1.0;
        unit.setData(next);
        benchmark::DoNotOptimize(unit.getValueOut().value);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_UnitSetDataWithoutListenerThenRead);

// Data changes without listener and without reading: what a value that nobody shows costs.
void BM_UnitSetDataUnobserved(benchmark::State& state)
{
    ZemTree::Unit<double> unit("Bench", ZemTree::LocalString::Empty(), ZemTree::LocalString::Empty(), 0.0);
    double next = 0.0;
    for (auto _ : state) {
        next += 1.0;
        unit.setData(next);
    }
    benchmark::DoNotOptimize(unit.getValueOut().value);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_UnitSetDataUnobserved);

} // namespace
