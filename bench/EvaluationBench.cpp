#include "core/tree/ActionUnit.h"
#include "core/tree/Unitable.h"
#include "evaluation/ActionEvaluationHelper.h"
#include "evaluation/ITestActionContainer.h"
#include "evaluation/ITestContainer.h"
#include "evaluation/TestQueueEvaluator.h"

#include <benchmark/benchmark.h>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace {

// A test that ends inside beginExecute, so a run measures the queue's own cost per test.
class InstantTest : public ZemTree::Unitable,
                    public virtual ZemTree::ITestContainer,
                    public virtual ZemTree::ITestActionContainer {
public:
    InstantTest() : ZemTree::Unitable("Test", "Test")
    {
        _before = add(std::make_unique<ZemTree::ActionUnit>("ActionBefore"));
        _after = add(std::make_unique<ZemTree::ActionUnit>("ActionAfter"));
    }
    Zem::Nullable<bool> getIsEvaluated() override { return true; }
    ZemTree::ActionUnit* getActionBefore() override { return _before; }
    ZemTree::ActionUnit* getActionAfter() override { return _after; }
    void beginExecute() override
    {
        _signalStateMessage.emit("done");
        _signalFinished.emit();
    }
    void forceStopExecute() override {}
    void clearResults() override {}
    bool isExternal() override { return false; }
    bool isRunning() override { return false; }
    std::chrono::system_clock::time_point getStartTime() const override { return {}; }
    std::chrono::system_clock::time_point getFinishTime() const override { return {}; }

private:
    ZemTree::ActionUnit* _before = nullptr;
    ZemTree::ActionUnit* _after = nullptr;
};

class ActionGroup : public ZemTree::Unitable, public virtual ZemTree::ITestActionContainer {
public:
    ActionGroup() : ZemTree::Unitable("Group")
    {
        _before = add(std::make_unique<ZemTree::ActionUnit>("ActionBefore"));
        _after = add(std::make_unique<ZemTree::ActionUnit>("ActionAfter"));
    }
    Zem::Nullable<bool> getIsEvaluated() override { return true; }
    ZemTree::ActionUnit* getActionBefore() override { return _before; }
    ZemTree::ActionUnit* getActionAfter() override { return _after; }

private:
    ZemTree::ActionUnit* _before = nullptr;
    ZemTree::ActionUnit* _after = nullptr;
};

// Two tests at the bottom of two chains of groups `depth` deep that meet only at the root: the worst walk.
void BM_CrossActionsBetweenDeepBranches(benchmark::State& state)
{
    const auto depth = static_cast<int>(state.range(0));
    ActionGroup root;
    ZemTree::Node* left = &root;
    ZemTree::Node* right = &root;
    for (int i = 0; i < depth; ++i) {
        left = left->add(std::make_unique<ActionGroup>());
        right = right->add(std::make_unique<ActionGroup>());
    }
    auto* from = left->add(std::make_unique<InstantTest>());
    auto* to = right->add(std::make_unique<InstantTest>());
    for (auto _ : state)
        ZemTree::ActionEvaluationHelper::evaluateCrossActions(from, to);
    state.SetItemsProcessed(state.iterations() * 2 * (depth + 1));
}
BENCHMARK(BM_CrossActionsBetweenDeepBranches)->Arg(2)->Arg(16);

// A whole run of instant tests under one group: thread start, actions, signals and the wait per test.
void BM_QueueRunOfInstantTests(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    ActionGroup root;
    std::vector<ZemTree::ITestContainer*> tests;
    for (int i = 0; i < count; ++i)
        tests.push_back(root.add(std::make_unique<InstantTest>()));

    ZemTree::TestQueueEvaluator queue;
    std::mutex mutex;
    std::condition_variable condition;
    bool isOver = false;
    queue.getSignalFinished().connect([&] {
        const std::lock_guard<std::mutex> lock(mutex);
        isOver = true;
        condition.notify_one();
    });
    for (auto _ : state) {
        isOver = false;
        queue.start(tests);
        std::unique_lock<std::mutex> lock(mutex);
        condition.wait(lock, [&] { return isOver; });
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_QueueRunOfInstantTests)->Arg(1)->Arg(100)->UseRealTime();

} // namespace
