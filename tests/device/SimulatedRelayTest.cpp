#include "core/device/SimulatedRelay.h"

#include "core/common/AutoResetEvent.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"

#include <sigc++/connection.h>

#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using ZemDevice::AnalogPhasor;
using ZemDevice::HardwareManager;
using ZemDevice::SimulatedRelay;
using ZemDevice::VirtualBinaryInputChannel;

AnalogPhasor amplitude(double value)
{
    AnalogPhasor phasor;
    phasor.amplitude = value;
    return phasor;
}

// Collects the changes of one input, made on the relay's thread, for the test's thread.
class InputWatch {
public:
    struct Change {
        bool state;
        Clock::time_point time;
        std::thread::id thread;
    };

    explicit InputWatch(VirtualBinaryInputChannel& input)
        : _connection(input.getSignalStateChanged().connect([this](bool state, Clock::time_point time) {
              {
                  const std::lock_guard<std::mutex> lock(_mutex);
                  _changes.push_back({state, time, std::this_thread::get_id()});
              }
              _event.set();
          }))
    {
    }
    ~InputWatch() { _connection.disconnect(); }
    InputWatch(const InputWatch&) = delete;
    InputWatch& operator=(const InputWatch&) = delete;

    // Waits until at least `count` changes came; false when none comes for ten seconds.
    bool waitFor(std::size_t count)
    {
        while (changes().size() < count)
            if (!_event.waitOne(std::chrono::seconds(10)))
                return changes().size() >= count;
        return true;
    }

    std::vector<Change> changes()
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _changes;
    }

private:
    std::mutex _mutex;
    std::vector<Change> _changes;
    Zem::AutoResetEvent _event;
    sigc::connection _connection;
};

class SimulatedRelayThreadTest : public ::testing::Test {
protected:
    VirtualBinaryInputChannel& input(std::size_t group, std::size_t index)
    {
        return *hardware.getVirtualChannels()->binaryInputGroups().at(group)->getChannel(index);
    }

    HardwareManager hardware;
};

TEST_F(SimulatedRelayThreadTest, StageOperatesNoSoonerThanItsOperateTimeAndResetsBelowPickup)
{
    auto& trip = input(0, 2);
    InputWatch watch(trip);
    auto* currents = hardware.getVirtualChannels()->analogOutputGroups()[0];
    SimulatedRelay relay(hardware);
    relay.addStage("AnalogOutputs/Group 1", 1, 2.0, 30ms, "BinaryInputs/Group 1/Input 3");

    currents->setPhasor(1, amplitude(1.99));
    currents->setPhasor(1, amplitude(2.5));
    const Clock::time_point applied = currents->getLastChangeTime();
    ASSERT_TRUE(watch.waitFor(1));
    EXPECT_TRUE(trip.getState());

    currents->setPhasor(1, amplitude(0.0));
    ASSERT_TRUE(watch.waitFor(2));
    EXPECT_FALSE(trip.getState());

    const auto changes = watch.changes();
    ASSERT_EQ(2u, changes.size());
    EXPECT_TRUE(changes[0].state);
    EXPECT_GE(changes[0].time - applied, 30ms);
    EXPECT_FALSE(changes[1].state);
    EXPECT_NE(std::this_thread::get_id(), changes[0].thread) << "the relay drives on its own thread";
}

// A follower copies an output onto an input later; the relay drives in the order of due times, so once the later
// follower's change arrives, a trip whose condition held on would have come before it.
TEST_F(SimulatedRelayThreadTest, AConditionThatReturnsBeforeItsTimeIsCancelled)
{
    auto& trip = input(0, 0);
    InputWatch tripWatch(trip);
    InputWatch followerWatch(input(0, 1));
    auto* currents = hardware.getVirtualChannels()->analogOutputGroups()[0];
    auto* output = hardware.getVirtualChannels()->binaryOutputGroups()[0]->getChannel(0);
    SimulatedRelay relay(hardware);
    relay.addStage("AnalogOutputs/Group 1", 0, 1.0, 20ms, "BinaryInputs/Group 1/Input 1");
    relay.addFollower("BinaryOutputs/Group 1/Output 1", "BinaryInputs/Group 1/Input 2", 60ms);

    currents->setPhasor(0, amplitude(5.0));
    currents->setPhasor(0, amplitude(0.5));
    output->setState(true);
    const Clock::time_point closed = output->getLastChangeTime();
    ASSERT_TRUE(followerWatch.waitFor(1));
    EXPECT_TRUE(tripWatch.changes().empty());
    EXPECT_FALSE(trip.getState());
    output->setState(false);
    ASSERT_TRUE(followerWatch.waitFor(2));
    const auto changes = followerWatch.changes();
    ASSERT_EQ(2u, changes.size());
    EXPECT_TRUE(changes[0].state);
    EXPECT_GE(changes[0].time - closed, 60ms);
    EXPECT_FALSE(changes[1].state);
}

TEST_F(SimulatedRelayThreadTest, AConditionThatAlreadyHoldsWhenAddedOperates)
{
    InputWatch watch(input(1, 0));
    hardware.getVirtualChannels()->analogOutputGroups()[2]->setPhasor(2, amplitude(-3.0));
    SimulatedRelay relay(hardware);
    relay.addStage("AnalogOutputs/Group 3", 2, 3.0, 0ms, "BinaryInputs/Group 2/Input 1");
    ASSERT_TRUE(watch.waitFor(1));
    EXPECT_TRUE(watch.changes()[0].state);
}

TEST_F(SimulatedRelayThreadTest, BadWiringIsRefused)
{
    SimulatedRelay relay(hardware);
    EXPECT_THROW(relay.addStage("AnalogOutputs/Group 4", 0, 1.0, 0ms, "BinaryInputs/Group 1/Input 1"),
                 std::logic_error);
    EXPECT_THROW(relay.addStage("AnalogOutputs/Group 1", 0, 1.0, 0ms, "BinaryOutputs/Group 1/Output 1"),
                 std::logic_error);
    EXPECT_THROW(relay.addFollower("BinaryInputs/Group 1/Input 1", "BinaryInputs/Group 1/Input 2", 0ms),
                 std::logic_error);
}

TEST_F(SimulatedRelayThreadTest, DestroyedWithAPendingChangeItDrivesNothingMore)
{
    auto& trip = input(0, 4);
    auto* currents = hardware.getVirtualChannels()->analogOutputGroups()[1];
    {
        SimulatedRelay relay(hardware);
        relay.addStage("AnalogOutputs/Group 2", 0, 1.0, std::chrono::hours(1), "BinaryInputs/Group 1/Input 5");
        currents->setPhasor(0, amplitude(2.0));
    }
    // The relay's slot is gone with it: changing the outputs now reaches nobody.
    currents->setPhasor(0, amplitude(0.0));
    EXPECT_FALSE(trip.getState());
}

} // namespace
