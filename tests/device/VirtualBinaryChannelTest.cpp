#include "core/device/VirtualBinaryChannel.h"

#include "core/common/AutoResetEvent.h"
#include "core/device/VirtualBinaryInputChannel.h"
#include "core/device/VirtualBinaryOutputChannel.h"

#include <sigc++/connection.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
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
        {"output", output, [](IBinaryStateChannel& c, bool s) { dynamic_cast<VirtualBinaryOutputChannel&>(c).setState(s); }},
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
        EXPECT_TRUE(recorder.changes[0].state);
        EXPECT_FALSE(recorder.changes[1].state);
        EXPECT_TRUE(recorder.changes[2].state);
        for (const Change& change : recorder.changes)
            EXPECT_EQ(change.state, change.stateSeenInSlot) << "the state is stored before the signal";
        EXPECT_LE(before, recorder.changes[0].time);
        EXPECT_LE(recorder.changes[0].time, recorder.changes[1].time);
        EXPECT_EQ(recorder.changes[2].time, row.channel.getLastChangeTime());
    }
}

TEST(DeviceThreadTest, DrivenOnAnotherThreadTheSignalFiresThereAndTheStateIsSeenHere)
{
    VirtualBinaryInputChannel input(1);
    Zem::AutoResetEvent changed;
    std::thread::id slotThread;
    Clock::time_point slotTime;
    std::mutex mutex;
    sigc::connection connection = input.getSignalStateChanged().connect([&](bool, Clock::time_point time) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            slotThread = std::this_thread::get_id();
            slotTime = time;
        }
        changed.set();
    });

    std::thread relay([&input] { input.drive(true); });
    ASSERT_TRUE(changed.waitOne(std::chrono::seconds(10)));
    relay.join();
    EXPECT_TRUE(input.getState());
    const std::lock_guard<std::mutex> lock(mutex);
    EXPECT_NE(std::this_thread::get_id(), slotThread);
    EXPECT_EQ(slotTime, input.getLastChangeTime());
    connection.disconnect();
}

TEST(DeviceThreadTest, ReadersOnOtherThreadsSeeConsistentStateWhileOneThreadToggles)
{
    VirtualBinaryOutputChannel output(1);
    int emitted = 0;
    sigc::connection connection = output.getSignalStateChanged().connect([&emitted](bool, Clock::time_point) {
        ++emitted;
    });
    const int toggles = 2000;
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int index = 0; index < toggles; ++index)
            output.setState(index % 2 == 0);
        done = true;
    });
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 2; ++reader) {
        readers.emplace_back([&output, &done] {
            Clock::time_point last = output.getLastChangeTime();
            while (!done) {
                output.getState();
                const Clock::time_point now = output.getLastChangeTime();
                EXPECT_LE(last, now);
                last = now;
            }
        });
    }
    writer.join();
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(toggles, emitted);
    EXPECT_FALSE(output.getState());
    connection.disconnect();
}

} // namespace
