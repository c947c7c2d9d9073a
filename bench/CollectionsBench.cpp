#include "collections/NotifyUniquePtrCollectionStructure.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace {

struct Element : ZemTree::IStructureChanged {
    int value = 0;
};

// Appending and then emptying an observed owning collection: the cost of the hook protocol per item.
void BM_AddAndReset(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        ZemTree::NotifyUniquePtrCollectionStructure<Element> collection;
        std::size_t observed = 0;
        collection.getSignalCollectionChanged().connect([&observed](auto&) { ++observed; });
        for (int i = 0; i < count; ++i)
            collection.add(std::make_unique<Element>());
        collection.reset();
        benchmark::DoNotOptimize(observed);
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_AddAndReset)->Arg(100)->Arg(10000);

// Removing from the front of a large collection: linear search plus vector shifting.
void BM_RemoveFront(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        Zem::NotifyUniquePtrCollection<Element> collection;
        for (int i = 0; i < count; ++i)
            collection.add(std::make_unique<Element>());
        state.ResumeTiming();
        while (!collection.empty())
            collection.remove(collection.front());
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_RemoveFront)->Arg(1000);

} // namespace
