#include "core/common/AutoResetEvent.h"
#include "core/common/PointerConnectionsDispatcher.h"
#include "core/common/ScopedConnection.h"

#include <sigc++/signal.h>

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

struct Counter {
    int a = 0;
    int b = 0;
};

TEST(PointerConnectionsDispatcherTest, DisconnectCutsOnlyThatKey)
{
    sigc::signal<void> signal;
    Counter count;
    const int keyA = 0;
    const int keyB = 0;
    Zem::PointerConnectionsDispatcher dispatcher;
    dispatcher.connect(&keyA, signal.connect([&] { ++count.a; }));
    dispatcher.connect(&keyA, signal.connect([&] { ++count.a; }));
    dispatcher.connect(&keyB, signal.connect([&] { ++count.b; }));
    EXPECT_EQ(dispatcher.size(), 3u);

    dispatcher.disconnect(&keyA);
    dispatcher.disconnect(&count); // Unknown key: nothing happens.
    signal.emit();

    EXPECT_EQ(count.a, 0);
    EXPECT_EQ(count.b, 1);
    EXPECT_FALSE(dispatcher.contains(&keyA));
    EXPECT_TRUE(dispatcher.contains(&keyB));
    EXPECT_EQ(dispatcher.size(), 1u);
}

TEST(PointerConnectionsDispatcherTest, DestructionDisconnectsEverySlot)
{
    sigc::signal<void> signal;
    int calls = 0;
    {
        Zem::PointerConnectionsDispatcher dispatcher;
        dispatcher.connect(&signal, signal.connect([&] { ++calls; }));
        dispatcher.connect(&calls, signal.connect([&] { ++calls; }));
    }
    signal.emit();
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(signal.empty());
}

// Destroying a slot may run a destructor that calls back into the dispatcher; that must not disturb the
// connections being cut (sanitizer builds catch a loop over a map that changes under it).
TEST(PointerConnectionsDispatcherTest, SlotDestructorMayCallBackIntoTheDispatcher)
{
    struct CallsBack {
        Zem::PointerConnectionsDispatcher* dispatcher;
        const void* otherKey;
        ~CallsBack() { dispatcher->disconnect(otherKey); }
    };
    sigc::signal<void> signal;
    int calls = 0;
    const int keyA = 0;
    const int keyB = 0;
    Zem::PointerConnectionsDispatcher dispatcher;
    auto probe = std::make_shared<CallsBack>(CallsBack{&dispatcher, &keyB});
    dispatcher.connect(&keyA, signal.connect([probe] {}));
    dispatcher.connect(&keyB, signal.connect([&] { ++calls; }));
    probe.reset();

    dispatcher.disconnectAll();
    signal.emit();

    EXPECT_EQ(calls, 0);
    EXPECT_EQ(dispatcher.size(), 0u);
}

TEST(ScopedConnectionTest, ReassignmentCutsTheOldConnection)
{
    sigc::signal<void> signal;
    int oldCalls = 0;
    int newCalls = 0;
    Zem::ScopedConnection holder;
    holder = signal.connect([&] { ++oldCalls; });
    holder = signal.connect([&] { ++newCalls; });
    signal.emit();
    EXPECT_EQ(oldCalls, 0);
    EXPECT_EQ(newCalls, 1);
    EXPECT_TRUE(holder.connected());

    holder.disconnect();
    signal.emit();
    EXPECT_EQ(newCalls, 1);
    EXPECT_FALSE(holder.connected());
}

TEST(ScopedConnectionTest, DestructionCutsTheConnection)
{
    sigc::signal<void> signal;
    int calls = 0;
    {
        Zem::ScopedConnection holder;
        holder = signal.connect([&] { ++calls; });
    }
    signal.emit();
    EXPECT_EQ(calls, 0);
}

} // namespace
