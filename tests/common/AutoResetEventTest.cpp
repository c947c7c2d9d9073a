#include "core/common/AutoResetEvent.h"

#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <thread>

namespace {

using namespace std::chrono_literals;

// Long enough never to expire on a loaded machine when the event works.
constexpr auto patience = 10s;
// Used where the wait is expected to time out.
constexpr auto brief = 30ms;

TEST(AutoResetEventTest, SetBeforeWaitIsKept)
{
    Zem::AutoResetEvent event;
    event.set();
    EXPECT_TRUE(event.waitOne(0ms));
}

TEST(AutoResetEventTest, WaitWithoutSetTimesOut)
{
    Zem::AutoResetEvent event;
    EXPECT_FALSE(event.waitOne(brief));
}

TEST(AutoResetEventTest, OneWaitConsumesOneSetAndSeveralSetsCountAsOne)
{
    Zem::AutoResetEvent event;
    event.set();
    event.set();
    EXPECT_TRUE(event.waitOne(patience));
    EXPECT_FALSE(event.waitOne(brief));
}

TEST(AutoResetEventTest, ResetClearsAPendingSet)
{
    Zem::AutoResetEvent event;
    event.set();
    event.reset();
    EXPECT_FALSE(event.waitOne(brief));
}

TEST(AutoResetEventTest, SetFromAnotherThreadReleasesABlockedWaiter)
{
    Zem::AutoResetEvent event;
    Zem::AutoResetEvent released;
    std::thread waiter([&] {
        event.waitOne();
        released.set();
    });
    event.set();
    EXPECT_TRUE(released.waitOne(patience));
    waiter.join();
}

TEST(AutoResetEventTest, OneSetReleasesOneOfTwoWaiters)
{
    Zem::AutoResetEvent event;
    std::mutex mutex;
    std::condition_variable changed;
    int releasedCount = 0;
    auto waitAndCount = [&] {
        event.waitOne();
        const std::lock_guard<std::mutex> lock(mutex);
        ++releasedCount;
        changed.notify_all();
    };
    std::thread first(waitAndCount);
    std::thread second(waitAndCount);

    std::unique_lock<std::mutex> lock(mutex);
    event.set();
    EXPECT_TRUE(changed.wait_for(lock, patience, [&] { return releasedCount >= 1; }));
    EXPECT_FALSE(changed.wait_for(lock, brief, [&] { return releasedCount >= 2; }));
    EXPECT_EQ(releasedCount, 1);

    event.set();
    EXPECT_TRUE(changed.wait_for(lock, patience, [&] { return releasedCount == 2; }));
    lock.unlock();
    first.join();
    second.join();
}

// The queue's pattern: the waiter destroys its event as soon as it is released, while set() may still be
// returning on the other thread. Sanitizer builds catch a set() that touches the event too late.
TEST(AutoResetEventTest, WaiterMayDestroyTheEventRightAfterRelease)
{
    for (int i = 0; i < 200; ++i) {
        auto event = std::make_unique<Zem::AutoResetEvent>();
        std::thread setter([raw = event.get()] { raw->set(); });
        ASSERT_TRUE(event->waitOne(patience));
        event.reset();
        setter.join();
    }
}

} // namespace
