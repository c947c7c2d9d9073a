#include "relay/RelayLogic.h"

#include "core/common/AutoResetEvent.h"
#include "core/common/ScopedConnection.h"
#include "core/common/ThreadHelper.h"
#include "core/device/HardwareVirtualChannels.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/device/IVirtualBinaryInputChannel.h"
#include "core/device/IVirtualBinaryOutputChannel.h"
#include "relay/DemoRelay.h"
#include "results/graph/GraphTimeManager.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace ZemDemo;

namespace {

using Clock = std::chrono::steady_clock;

ZemDevice::IVirtualAnalogOutputGroup* group(SimulatedRelayUnderTest& relay, const char* path)
{
    return relay.getHardware().getVirtualChannels()->find<ZemDevice::IVirtualAnalogOutputGroup>(path);
}

ZemDevice::IVirtualBinaryInputChannel* input(SimulatedRelayUnderTest& relay, const char* path)
{
    return relay.getHardware().getVirtualChannels()->find<ZemDevice::IVirtualBinaryInputChannel>(path);
}

// Waits for an input with a generous time-out; true when it showed `state` in time.
bool waitFor(ZemDevice::IVirtualBinaryInputChannel* channel, bool state)
{
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(5);
    while (channel->getState() != state) {
        if (Clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

// Collects the changes of one input, made on the relay's thread, for the test's thread.
class InputWatch {
public:
    struct Change {
        bool state;
        Clock::time_point time;
        std::string thread;
    };

    explicit InputWatch(ZemDevice::IVirtualBinaryInputChannel* channel)
    {
        _connection = channel->getSignalStateChanged().connect([this](bool state, Clock::time_point time) {
            {
                const std::lock_guard<std::mutex> lock(_mutex);
                _changes.push_back({state, time, Zem::ThreadHelper::getCurrentThreadName()});
            }
            _event.set();
        });
    }

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
    Zem::ScopedConnection _connection;
};

TEST(RelayLogicThread, CurveTimesFollowTheIecFormulaAndItsGraphText)
{
    struct Row {
        const char* curve;
        double k;
        double a;
    };
    for (const Row& row : {Row{"standard", 0.14, 0.02}, Row{"very", 13.5, 1.0}, Row{"extremely", 80.0, 2.0}}) {
        for (const double multiple : {1.5, 2.0, 5.0, 10.0, 20.0}) {
            SCOPED_TRACE(std::string(row.curve) + " at " + std::to_string(multiple));
            const double expected = 0.1 * row.k / (std::pow(multiple, row.a) - 1.0);
            EXPECT_NEAR(RelayLogic::curveTime(row.curve, multiple, 0.1), expected, 1e-12);
            // The time graph judges by the formula text: it must describe the same curve.
            EXPECT_NEAR(
                ZemTree::GraphTimeManager::CalculateTime(RelayLogic::curveFormula(row.curve), 1.0, 0.1, multiple),
                expected, 1e-9 * expected + 1e-12);
        }
        EXPECT_TRUE(std::isinf(RelayLogic::curveTime(row.curve, 1.0, 0.1))) << "no trip at the pickup itself";
    }
    EXPECT_THROW(RelayLogic::curveTime("moderately", 2.0, 0.1), std::logic_error);
}

TEST(RelayLogicThread, BadSettingsAreRefused)
{
    struct Row {
        const char* text;
        RelaySettings settings;
    };
    std::vector<Row> rows(6);
    rows[0] = {"unknown curve", {}};
    rows[0].settings.curve = "inverse";
    rows[1] = {"zero pickup", {}};
    rows[1].settings.pickup = 0.0;
    rows[2] = {"negative time multiplier", {}};
    rows[2].settings.timeMultiplier = -0.1;
    rows[3] = {"NaN zone", {}};
    rows[3].settings.zoneX = std::nan("");
    rows[4] = {"noise of one", {}};
    rows[4].settings.noise = 1.0;
    rows[5] = {"zero time scale", {}};
    rows[5].settings.timeScale = 0.0;
    rows.push_back({"negative follower delay", {}});
    rows.back().settings.followerDelay = -0.001;
    rows.push_back({"NaN follower delay", {}});
    rows.back().settings.followerDelay = std::nan("");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_THROW(SimulatedRelayUnderTest relay(row.settings), std::logic_error);
    }
}

TEST(RelayLogicThread, RayReachMeetsTheZoneEdges)
{
    for (const double lineAngle : {75.0, 60.0, 90.0}) {
        const std::vector<Zem::Point> polygon = RelayLogic::zonePolygon(10.0, 8.0, lineAngle);
        // The resistive edge leans with the line: at X = 0 it stands a fifth of its lean to the right of R.
        const double lean = 8.0 / std::tan(lineAngle * M_PI / 180.0);
        struct Row {
            double angle;
            double reach;
        };
        for (const Row& row : {Row{0.0, 10.0 + lean / 5.0}, Row{90.0, 8.0}, Row{180.0, 2.5}, Row{270.0, 2.0}}) {
            SCOPED_TRACE(std::to_string(lineAngle) + " line, ray at " + std::to_string(row.angle));
            EXPECT_NEAR(RelayLogic::rayReach(polygon, row.angle), row.reach, 1e-9);
        }
    }
}

TEST(RelayLogicThread, StartFollowsThePickupAndTripComesAfterTheCurveTime)
{
    RelaySettings settings;
    settings.noise = 0.0;
    settings.curve = "very";
    SimulatedRelayUnderTest relay(settings);
    auto* currents = group(relay, RelayLogic::CurrentGroupPath);
    auto* start = input(relay, RelayLogic::StartInputPath);
    auto* trip = input(relay, RelayLogic::TripInputPath);

    for (const double current : {0.5, 0.999, 1.0, 1.2, 0.8}) {
        SCOPED_TRACE(current);
        currents->setPhasor(1, {current, -120.0, 50.0});
        ASSERT_TRUE(relay.getLogic().waitSettled(std::chrono::seconds(5)));
        EXPECT_EQ(start->getState(), current >= 1.0);
        EXPECT_FALSE(trip->getState());
    }

    currents->setPhasor(2, {10.0, 120.0, 50.0});
    const Clock::time_point injected = currents->getLastChangeTime();
    ASSERT_TRUE(waitFor(trip, true));
    const double operate = RelayLogic::curveTime("very", 10.0, 0.1);
    ASSERT_TRUE(relay.getLogic().getLastReportedTripTime().has_value());
    EXPECT_DOUBLE_EQ(*relay.getLogic().getLastReportedTripTime(), operate);
    // Never before the scaled operate time, whatever the threads do.
    EXPECT_GE(trip->getLastChangeTime() - injected,
              std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(operate * 0.1)));

    currents->setPhasor(2, {0.0, 120.0, 50.0});
    currents->setPhasor(1, {0.0, -120.0, 50.0});
    ASSERT_TRUE(relay.getLogic().waitSettled(std::chrono::seconds(5)));
    EXPECT_FALSE(start->getState());
    EXPECT_FALSE(trip->getState()) << "the trip contact opens with the current";
}

TEST(RelayLogicThread, ZoneStartsOnlyForImpedancesInside)
{
    RelaySettings settings;
    settings.noise = 0.0;
    SimulatedRelayUnderTest relay(settings);
    auto* currents = group(relay, RelayLogic::CurrentGroupPath);
    auto* voltages = group(relay, RelayLogic::VoltageGroupPath);
    auto* start = input(relay, RelayLogic::ZoneStartInputPath);
    struct Row {
        double magnitude;
        double angle;
        bool isInside;
    };
    for (const Row& row : {Row{5.0, 0.0, true}, Row{11.0, 0.0, false}, Row{9.5, 90.0, true}, Row{10.5, 90.0, false},
                           Row{2.0, 180.0, true}, Row{3.0, 180.0, false}, Row{12.0, 60.0, false}}) {
        SCOPED_TRACE(std::to_string(row.magnitude) + " at " + std::to_string(row.angle));
        voltages->setPhasor(0, {row.magnitude * 0.5, row.angle, 50.0});
        currents->setPhasor(0, {0.5, 0.0, 50.0});
        ASSERT_TRUE(relay.getLogic().waitSettled(std::chrono::seconds(5)));
        EXPECT_EQ(start->getState(), row.isInside);
        currents->setPhasor(0, {0.0, 0.0, 50.0});
        ASSERT_TRUE(relay.getLogic().waitSettled(std::chrono::seconds(5)));
        EXPECT_FALSE(start->getState()) << "without current the zone does not measure";
    }
}

// The follower copies the output both ways, each change its delay after the output's and never sooner, from the
// relay's own thread; a pulse shorter than the delay is cancelled and never reaches the input.
TEST(RelayLogicThread, FollowerCopiesTheOutputAfterItsDelayAndDropsShorterPulses)
{
    RelaySettings settings;
    settings.timeScale = 1.0;
    settings.followerDelay = 0.06;
    // The watch outlives the relay, whose thread emits to it.
    ZemDevice::HardwareManager hardware;
    auto* channels = hardware.getVirtualChannels();
    auto* output = channels->find<ZemDevice::IVirtualBinaryOutputChannel>(RelayLogic::ContactOutputPath);
    InputWatch watch(channels->find<ZemDevice::IVirtualBinaryInputChannel>(RelayLogic::ContactInputPath));
    RelayLogic logic(hardware, settings);

    // Each row changes the output; `seen` is how many input changes that must add in the end.
    struct Row {
        const char* text;
        std::vector<bool> states;
        std::size_t seen;
    };
    const std::vector<Row> rows = {{"a pulse shorter than the delay", {true, false}, 0},
                                   {"close", {true}, 1},
                                   {"an opening shorter than the delay", {false, true}, 0},
                                   {"open", {false}, 1}};
    std::size_t expected = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Clock::time_point last;
        for (const bool state : row.states) {
            output->setState(state);
            last = output->getLastChangeTime();
        }
        if (row.seen == 0) {
            // A later close and open show that the cancelled change was not merely late.
            continue;
        }
        expected += row.seen;
        ASSERT_TRUE(watch.waitFor(expected));
        const auto changes = watch.changes();
        ASSERT_EQ(expected, changes.size()) << "a cancelled pulse reached the input";
        EXPECT_EQ(row.states.back(), changes.back().state);
        EXPECT_GE(changes.back().time - last, std::chrono::milliseconds(60));
        EXPECT_EQ("ZemDemo_Relay", changes.back().thread);
    }
}

TEST(RelayLogicThread, FollowerClosesForAnOutputClosedBeforeTheRelayWasMade)
{
    ZemDevice::HardwareManager hardware;
    auto* channels = hardware.getVirtualChannels();
    channels->find<ZemDevice::IVirtualBinaryOutputChannel>(RelayLogic::ContactOutputPath)->setState(true);
    auto* follower = channels->find<ZemDevice::IVirtualBinaryInputChannel>(RelayLogic::ContactInputPath);
    InputWatch watch(follower);
    RelayLogic logic(hardware, RelaySettings{});
    ASSERT_TRUE(watch.waitFor(1));
    EXPECT_TRUE(follower->getState());
}

// Destroyed with a trip and a follower change pending, the relay drives nothing more, and its slots are gone.
TEST(RelayLogicThread, DestroyedWithChangesPendingItDrivesNothingMore)
{
    ZemDevice::HardwareManager hardware;
    auto* channels = hardware.getVirtualChannels();
    auto* output = channels->find<ZemDevice::IVirtualBinaryOutputChannel>(RelayLogic::ContactOutputPath);
    auto* currents = channels->find<ZemDevice::IVirtualAnalogOutputGroup>(RelayLogic::CurrentGroupPath);
    InputWatch followerWatch(channels->find<ZemDevice::IVirtualBinaryInputChannel>(RelayLogic::ContactInputPath));
    InputWatch tripWatch(channels->find<ZemDevice::IVirtualBinaryInputChannel>(RelayLogic::TripInputPath));
    {
        RelaySettings settings;
        settings.timeScale = 1.0;
        settings.followerDelay = 3600.0;
        settings.timeMultiplier = 1000.0;
        RelayLogic logic(hardware, settings);
        output->setState(true);
        currents->setPhasor(0, {2.0, 0.0, 50.0});
        ASSERT_TRUE(logic.waitSettled(std::chrono::seconds(5)));
    }
    output->setState(false);
    output->setState(true);
    currents->setPhasor(0, {20.0, 0.0, 50.0});
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_TRUE(followerWatch.changes().empty());
    EXPECT_TRUE(tripWatch.changes().empty());
}

} // namespace
