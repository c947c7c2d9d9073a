// Long runs that look for lost signals, deadlocks and inconsistent views: the queue over thousands of tests that
// end on other threads at random moments while it is stopped and restarted, a value with many listeners, and a
// collection mirrored by an observer through many changes.
#include "collections/NotifyCollection.h"
#include "core/common/AutoResetEvent.h"
#include "core/tree/Unitable.h"
#include "evaluation/ITestContainer.h"
#include "evaluation/TestQueueEvaluator.h"
#include "values/NumericUnit.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

class FinishingTest;

// A few threads that end tests when they are due, or at once when the test is forced to stop.
class Finishers {
public:
    explicit Finishers(int count)
    {
        for (int i = 0; i < count; ++i)
            _threads.emplace_back([this] { _run(); });
    }
    ~Finishers()
    {
        {
            std::lock_guard<std::mutex> lock(_mutex);
            _isStopping = true;
        }
        _condition.notify_all();
        for (std::thread& thread : _threads)
            thread.join();
    }

    void schedule(FinishingTest* test, Clock::time_point due)
    {
        {
            std::lock_guard<std::mutex> lock(_mutex);
            _jobs.push_back({test, due});
        }
        _condition.notify_one();
    }
    void wake() { _condition.notify_all(); }

private:
    struct Job {
        FinishingTest* test;
        Clock::time_point due;
    };
    void _run();

    std::mutex _mutex;
    std::condition_variable _condition;
    std::deque<Job> _jobs;
    bool _isStopping = false;
    std::vector<std::thread> _threads;
};

// A test that ends inside beginExecute or later on one of the finishers, as its plan says.
class FinishingTest : public ZemTree::Unitable, public virtual ZemTree::ITestContainer {
public:
    FinishingTest(int index, Finishers& finishers, bool isSynchronous, std::chrono::microseconds delay)
        : ZemTree::Unitable("T" + std::to_string(index)), _finishers(finishers), _isSynchronous(isSynchronous),
          _delay(delay)
    {
    }

    Zem::Nullable<bool> getIsEvaluated() override { return true; }
    void beginExecute() override
    {
        ++beginCount;
        _isRunning = true;
        if (_isSynchronous)
            finish();
        else
            _finishers.schedule(this, Clock::now() + _delay);
    }
    void forceStopExecute() override
    {
        isForced = true;
        _finishers.wake();
    }
    void clearResults() override {}
    bool isExternal() override { return false; }
    bool isRunning() override { return _isRunning; }
    std::chrono::system_clock::time_point getStartTime() const override { return {}; }
    std::chrono::system_clock::time_point getFinishTime() const override { return {}; }

    void finish()
    {
        ++finishCount;
        _isRunning = false;
        _signalFinished.emit();
    }

    std::atomic<int> beginCount{0};
    std::atomic<int> finishCount{0};
    std::atomic<bool> isForced{false};

private:
    Finishers& _finishers;
    const bool _isSynchronous;
    const std::chrono::microseconds _delay;
    std::atomic<bool> _isRunning{false};
};

void Finishers::_run()
{
    std::unique_lock<std::mutex> lock(_mutex);
    for (;;) {
        if (_isStopping)
            return;
        const auto ready = std::find_if(_jobs.begin(), _jobs.end(), [](const Job& job) {
            return job.due <= Clock::now() || job.test->isForced.load();
        });
        if (ready != _jobs.end()) {
            FinishingTest* const test = ready->test;
            _jobs.erase(ready);
            lock.unlock();
            test->finish();
            lock.lock();
            continue;
        }
        if (_jobs.empty())
            _condition.wait(lock);
        else
            _condition.wait_for(lock, std::chrono::microseconds(50));
    }
}

TEST(QueueStress, TenThousandTestsThroughStopsAndRestarts)
{
    constexpr int testCount = 10000;
    std::mt19937 random(20261123);
    // The finishers are joined before the tests go: the last one may still be inside its finished signal when
    // the run is seen to be over.
    std::vector<std::unique_ptr<FinishingTest>> tests;
    Finishers finishers(3);
    for (int i = 0; i < testCount; ++i)
        tests.push_back(std::make_unique<FinishingTest>(i, finishers, random() % 4 == 0,
                                                        std::chrono::microseconds(random() % 200)));

    ZemTree::TestQueueEvaluator queue;
    Zem::AutoResetEvent finished;
    std::atomic<int> finishedSignals{0};
    std::atomic<int> testFinishedSignals{0};
    queue.getSignalFinished().connect([&] {
        ++finishedSignals;
        finished.set();
    });
    queue.getSignalCurrentTestFinished().connect([&] { ++testFinishedSignals; });

    std::size_t next = 0;
    int rounds = 0;
    while (next < tests.size()) {
        SCOPED_TRACE("round " + std::to_string(rounds));
        std::vector<ZemTree::ITestContainer*> rest;
        for (std::size_t i = next; i < tests.size(); ++i)
            rest.push_back(tests[i].get());
        const int signalsBefore = finishedSignals;
        const int testSignalsBefore = testFinishedSignals;

        queue.start(rest);
        // Runs are stopped after a random moment, down to the last few hundred tests, which run to their end.
        const bool stops = rest.size() > 300;
        if (stops) {
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
            queue.stop();
        }
        ASSERT_TRUE(finished.waitOne(std::chrono::seconds(60))) << "the run did not end";
        ++rounds;
        EXPECT_EQ(finishedSignals, signalsBefore + 1);
        EXPECT_FALSE(queue.isStarted());

        // The tests of this run that were begun form a prefix of it, each begun and ended exactly once.
        std::size_t begun = next;
        while (begun < tests.size() && tests[begun]->beginCount > 0)
            ++begun;
        for (std::size_t i = begun; i < tests.size(); ++i)
            ASSERT_EQ(tests[i]->beginCount, 0) << "test " << i << " was begun out of order";
        for (std::size_t i = next; i < begun; ++i) {
            ASSERT_EQ(tests[i]->beginCount, 1) << "test " << i;
            ASSERT_EQ(tests[i]->finishCount, 1) << "test " << i;
        }
        EXPECT_EQ(testFinishedSignals - testSignalsBefore, static_cast<int>(begun - next));
        if (!stops) {
            EXPECT_EQ(begun, tests.size());
        }
        next = begun;
    }
    EXPECT_GT(rounds, 3);
    EXPECT_EQ(testFinishedSignals, testCount);
}

TEST(ValueStress, ThousandListenersSeeEveryOneOfManyChanges)
{
    constexpr int listenerCount = 1000;
    constexpr int changeCount = 100000;
    ZemTree::NumericUnit number("Number");
    std::vector<int> calls(listenerCount, 0);
    int stale = 0;
    double expected = 0.0;
    for (int i = 0; i < listenerCount; ++i) {
        number.getSignalValueOutChanged().connect([&, i] {
            ++calls[i];
            // Some listeners read the value, as a view would; it must already be the new one.
            if (i % 100 == 0 && number.getValueOut().value != expected)
                ++stale;
        });
    }
    for (int change = 1; change <= changeCount; ++change) {
        expected = change % 2 == 0 ? change : -change;
        number.setData(expected);
    }
    EXPECT_EQ(stale, 0);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), changeCount), listenerCount);
    EXPECT_EQ(number.getValueOut().value, expected);
}

TEST(CollectionStress, ObserverMirrorStaysEqualThroughManyChanges)
{
    using Collection = Zem::NotifyCollection<int*>;
    Collection collection;
    std::vector<int*> mirror;
    collection.getSignalCollectionChanged().connect([&](Collection::Args& args) {
        switch (args.action) {
        case Zem::NotifyCollectionChangedAction::Added:
            mirror.insert(mirror.begin() + static_cast<std::ptrdiff_t>(args.index), args.item);
            break;
        case Zem::NotifyCollectionChangedAction::Removed:
            mirror.erase(mirror.begin() + static_cast<std::ptrdiff_t>(args.index));
            break;
        case Zem::NotifyCollectionChangedAction::Moved:
            mirror.erase(mirror.begin() + static_cast<std::ptrdiff_t>(args.oldIndex));
            mirror.insert(mirror.begin() + static_cast<std::ptrdiff_t>(args.index), args.item);
            break;
        }
    });

    std::vector<int> storage(1000);
    std::mt19937 random(7);
    for (int operation = 0; operation < 100000; ++operation) {
        const std::size_t size = collection.size();
        const unsigned choice = random() % 10;
        if (size < 50 || choice < 4) {
            collection.insert(random() % (size + 1), &storage[random() % storage.size()]);
        }
        else if (choice < 8) {
            // Removes the first of equal items, which the observer must place by its index.
            collection.remove(collection.at(random() % size));
        }
        else {
            collection.move(random() % size, random() % size);
        }
        if (operation % 10000 == 0) {
            ASSERT_TRUE(std::equal(mirror.begin(), mirror.end(), collection.begin(), collection.end()))
                << "after operation " << operation;
        }
    }
    EXPECT_TRUE(std::equal(mirror.begin(), mirror.end(), collection.begin(), collection.end()));
    collection.reset();
    EXPECT_TRUE(mirror.empty());
}

} // namespace
