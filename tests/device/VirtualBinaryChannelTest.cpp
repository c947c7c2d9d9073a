#include "core/device/VirtualBinaryChannel.h"

#include "core/device/VirtualBinaryInputChannel.h"
#include "core/device/VirtualBinaryOutputChannel.h"

#include <sigc++/connection.h>

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using ZemDevice::IBinaryStateChannel;
using ZemDevice::VirtualBinaryInputChannel;
using ZemDevice::VirtualBinaryOutputChannel;

struct Change {
    bool state;
    Clock::time_point time;
    bool stateSeenInSlot;
};

// Records every change of a channel, with the state the slot reads back at that moment.
class ChangeRecorder {
public:
    explicit ChangeRecorder(IBinaryStateChannel& channel)
        : _connection(channel.getSignalStateChanged().connect([this, &channel](bool state, Clock::time_point time) {
              changes.push_back(Change{state, time, channel.getState()});
          }))
    {
    }
    ~ChangeRecorder() { _connection.disconnect(); }
    ChangeRecorder(const ChangeRecorder&) = delete;
    ChangeRecorder& operator=(const ChangeRecorder&) = delete;

    std::vector<Change> changes;

private:
    sigc::connection _connection;
};

TEST(DeviceChannelTest, EachRealChangeEmitsOnceWithItsStateAndTime)
{
    VirtualBinaryOutputChannel output(2);
    VirtualBinaryInputChannel input(3);
    const struct {
        const char* what;
        IBinaryStateChannel& channel;
        void (*change)(IBinaryStateChannel&, bool);
    } rows[] = {
        {"output", output,
         [](IBinaryStateChannel& c, bool s) { dynamic_cast<VirtualBinaryOutputChannel&>(c).setState(s); }},
        {"input", input, [](IBinaryStateChannel& c, bool s) { dynamic_cast<VirtualBinaryInputChannel&>(c).drive(s); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_FALSE(row.channel.getState());
        ChangeRecorder recorder(row.channel);
        const Clock::time_point before = Clock::now();
        for (bool state : {false, true, true, false, true})
            row.change(row.channel, state);
        ASSERT_EQ(3u, recorder.changes.size());
        for (std::size_t index = 0; index < 3; ++index) {
            EXPECT_EQ(index != 1, recorder.changes[index].state);
            EXPECT_EQ(index != 1, recorder.changes[index].stateSeenInSlot) << "the state is stored before the signal";
        }
        EXPECT_LE(before, recorder.changes[0].time);
        EXPECT_EQ(recorder.changes[2].time, row.channel.getLastChangeTime());
    }
}

// One thread drives an input while two others read it: the signal fires on the driving thread, every change
// emits once, and the readers see the change times only grow.
TEST(DeviceThreadTest, ReadersOnOtherThreadsSeeConsistentStateWhileOneThreadDrives)
{
    VirtualBinaryInputChannel input(1);
    const int toggles = 2000;
    int emitted = 0;
    std::thread::id slotThread;
    sigc::connection connection = input.getSignalStateChanged().connect([&](bool, Clock::time_point) {
        ++emitted;
        slotThread = std::this_thread::get_id();
    });
    std::atomic<bool> done{false};
    std::thread driver([&] {
        for (int index = 0; index < toggles; ++index)
            input.drive(index % 2 == 0);
        done = true;
    });
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 2; ++reader) {
        readers.emplace_back([&input, &done] {
            Clock::time_point last = input.getLastChangeTime();
            while (!done) {
                input.getState();
                const Clock::time_point now = input.getLastChangeTime();
                EXPECT_LE(last, now);
                last = now;
            }
        });
    }
    const std::thread::id driverThread = driver.get_id();
    driver.join();
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(toggles, emitted);
    EXPECT_EQ(driverThread, slotThread);
    EXPECT_FALSE(input.getState());
    connection.disconnect();
}

} // namespace
