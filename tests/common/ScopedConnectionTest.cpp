#include "core/common/ScopedConnection.h"

#include <sigc++/signal.h>

#include <gtest/gtest.h>

namespace {

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
