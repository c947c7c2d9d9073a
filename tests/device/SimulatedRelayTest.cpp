#include "core/device/SimulatedRelay.h"

#include "core/common/AutoResetEvent.h"
#include "core/device/HardwareManager.h"
#include "core/device/HardwareVirtualChannels.h"

#include <sigc++/connection.h>

#include <gtest/gtest.h>

#include <chrono>
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

const auto patience = std::chrono::seconds(10);

AnalogPhasor amplitude(double value)
{
    AnalogPhasor phasor;
    phasor.amplitude = value;
    return phasor;
}

// Collects the changes of one input, made on the relay's thread, for the test's thread.
class InputWatch {
public:
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

    struct Change {
        bool state;
        Clock::time_point time;
        std::thread::id thread;
    };

    // Waits until at least `count` changes came; false on time-out.
    bool waitFor(std::size_t count)
    {
        const Clock::time_point deadline = Clock::now() + patience;
        while (size() < count) {
            if (!_event.waitOne(std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()))
                && size() < count)
                return false;
        }
        return true;
    }

    std::vector<Change> changes()
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _changes;
    }
    std::size_t size()
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _changes.size();
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

TEST_F(SimulatedRelayThreadTest, FollowerCopiesAnOutputOntoAnInputLater)
{
    auto& echo = input(1, 7);
    InputWatch watch(echo);
    auto* output = hardware.getVirtualChannels()->binaryOutputGroups()[0]->getChannel(0);
    SimulatedRelay relay(hardware);
    relay.addFollower("BinaryOutputs/Group 1/Output 1", "BinaryInputs/Group 2/Input 8", 5ms);

    output->setState(true);
    const Clock::time_point closed = output->getLastChangeTime();
    ASSERT_TRUE(watch.waitFor(1));
    output->setState(false);
    const Clock::time_point opened = output->getLastChangeTime();
    ASSERT_TRUE(watch.waitFor(2));

    const auto changes = watch.changes();
    ASSERT_EQ(2u, changes.size());
    EXPECT_TRUE(changes[0].state);
    EXPECT_FALSE(changes[1].state);
    EXPECT_GE(changes[0].time - closed, 5ms);
    EXPECT_GE(changes[1].time - opened, 5ms);
}

TEST_F(SimulatedRelayThreadTest, AConditionThatReturnsBeforeItsTimeIsCancelled)
{
    auto& trip = input(0, 0);
    auto& sentinel = input(0, 1);
    InputWatch tripWatch(trip);
    InputWatch sentinelWatch(sentinel);
    auto* currents = hardware.getVirtualChannels()->analogOutputGroups()[0];
    auto* output = hardware.getVirtualChannels()->binaryOutputGroups()[0]->getChannel(0);
    SimulatedRelay relay(hardware);
    relay.addStage("AnalogOutputs/Group 1", 0, 1.0, 20ms, "BinaryInputs/Group 1/Input 1");
    relay.addFollower("BinaryOutputs/Group 1/Output 1", "BinaryInputs/Group 1/Input 2", 60ms);

    currents->setPhasor(0, amplitude(5.0));
    currents->setPhasor(0, amplitude(0.5));
    // The relay drives in the order of due times: once the later sentinel arrives, the trip would have come.
    output->setState(true);
    ASSERT_TRUE(sentinelWatch.waitFor(1));
    EXPECT_EQ(0u, tripWatch.size());
    EXPECT_FALSE(trip.getState());
}

TEST_F(SimulatedRelayThreadTest, AConditionThatAlreadyHoldsWhenAddedOperates)
{
    auto& trip = input(1, 0);
    InputWatch watch(trip);
    hardware.getVirtualChannels()->analogOutputGroups()[2]->setPhasor(2, amplitude(-3.0));
    SimulatedRelay relay(hardware);
    relay.addStage("AnalogOutputs/Group 3", 2, 3.0, 0ms, "BinaryInputs/Group 2/Input 1");
    ASSERT_TRUE(watch.waitFor(1));
    EXPECT_TRUE(trip.getState());
}

TEST_F(SimulatedRelayThreadTest, BadWiringIsRefused)
{
    SimulatedRelay relay(hardware);
    EXPECT_THROW(relay.addStage("AnalogOutputs/Group 4", 0, 1.0, 0ms, "BinaryInputs/Group 1/Input 1"),
                 std::logic_error);
    EXPECT_THROW(relay.addStage("AnalogOutputs/Group 1", 3, 1.0, 0ms, "BinaryInputs/Group 1/Input 1"),
                 std::logic_error);
    EXPECT_THROW(relay.addStage("AnalogOutputs/Group 1", 0, 1.0, 0ms, "BinaryOutputs/Group 1/Output 1"),
                 std::logic_error);
    EXPECT_THROW(relay.addFollower("BinaryInputs/Group 1/Input 1", "BinaryInputs/Group 1/Input 2", 0ms),
                 std::logic_error);
    EXPECT_THROW(relay.addFollower("BinaryOutputs/Group 1/Output 1", "", 0ms), std::logic_error);
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
