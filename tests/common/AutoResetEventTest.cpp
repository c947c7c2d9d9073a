#include "core/common/AutoResetEvent.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace {

using namespace std::chrono_literals;

// Long enough never to expire on a loaded machine when the event works.
constexpr auto patience = 10s;
// Used where the wait is expected to time out.
constexpr auto brief = 30ms;

TEST(AutoResetEventTest, SetsDoNotCountAndResetClears)
{
    Zem::AutoResetEvent event;
    EXPECT_FALSE(event.waitOne(brief));
    event.set();
    event.set();
    EXPECT_TRUE(event.waitOne(0ms));
    EXPECT_FALSE(event.waitOne(brief));
    event.set();
    event.reset();
    EXPECT_FALSE(event.waitOne(brief));
}

TEST(AutoResetEventTest, OneSetReleasesOneOfTwoBlockedWaiters)
{
    Zem::AutoResetEvent event;
    Zem::AutoResetEvent released;
    std::atomic<int> count{0};
    auto waitAndSignal = [&] {
        event.waitOne();
        ++count;
        released.set();
    };
    std::thread first(waitAndSignal);
    std::thread second(waitAndSignal);

    event.set();
    EXPECT_TRUE(released.waitOne(patience));
    EXPECT_FALSE(released.waitOne(brief));
    EXPECT_EQ(count, 1);
    event.set();
    first.join();
    second.join();
    EXPECT_EQ(count, 2);
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
