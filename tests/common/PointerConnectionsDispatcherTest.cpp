#include "core/common/PointerConnectionsDispatcher.h"

#include <sigc++/signal.h>

#include <gtest/gtest.h>
#include <memory>

namespace {

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

} // namespace
