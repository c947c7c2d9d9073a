#include "core/device/VirtualAnalogOutputGroup.h"

#include "core/common/AutoResetEvent.h"

#include <sigc++/connection.h>

#include <chrono>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using ZemDevice::AnalogPhasor;
using ZemDevice::HardwareGroupLayout;
using ZemDevice::VirtualAnalogOutputGroup;

const double nan = std::numeric_limits<double>::quiet_NaN();

AnalogPhasor phasor(double amplitude, double angle = 0.0, double frequency = 50.0)
{
    AnalogPhasor value;
    value.amplitude = amplitude;
    value.angle = angle;
    value.frequency = frequency;
    return value;
}

class DeviceAnalogGroupTest : public ::testing::Test {
protected:
    DeviceAnalogGroupTest()
        : group(1, HardwareGroupLayout{3, "", {}}),
          _connection(group.getSignalChanged().connect([this](Clock::time_point time) { times.push_back(time); }))
    {
    }
    ~DeviceAnalogGroupTest() override { _connection.disconnect(); }

    VirtualAnalogOutputGroup group;
    std::vector<Clock::time_point> times;

private:
    sigc::connection _connection;
};

TEST_F(DeviceAnalogGroupTest, SettersEmitOnlyOnAChangeAndNaNAlwaysEmits)
{
    const struct {
        const char* what;
        void (*apply)(VirtualAnalogOutputGroup&);
        std::size_t emits;
    } rows[] = {
        {"all silent again", [](VirtualAnalogOutputGroup& g) { g.setPhasors(std::vector<AnalogPhasor>(3)); }, 0},
        {"amplitude", [](VirtualAnalogOutputGroup& g) { g.setPhasor(0, phasor(1.0)); }, 1},
        {"same phasor", [](VirtualAnalogOutputGroup& g) { g.setPhasor(0, phasor(1.0)); }, 0},
        {"frequency", [](VirtualAnalogOutputGroup& g) { g.setPhasor(2, phasor(0.0, 0.0, 60.0)); }, 1},
        {"NaN twice",
         [](VirtualAnalogOutputGroup& g) {
             g.setPhasor(1, phasor(nan));
             g.setPhasor(1, phasor(nan));
         },
         2},
        {"all at once",
         [](VirtualAnalogOutputGroup& g) {
             g.setPhasors({phasor(1), phasor(2), phasor(3)});
         },
         1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const std::size_t before = times.size();
        row.apply(group);
        EXPECT_EQ(row.emits, times.size() - before);
    }
    EXPECT_EQ(2.0, group.getPhasor(1).amplitude);
    ASSERT_FALSE(times.empty());
    EXPECT_EQ(times.back(), group.getLastChangeTime());
}

TEST_F(DeviceAnalogGroupTest, RefusedChangesLeavePhasorsAndSignalUntouched)
{
    group.setPhasor(0, phasor(5.0));
    times.clear();
    EXPECT_THROW(group.setPhasor(3, phasor(1.0)), std::out_of_range);
    EXPECT_THROW(group.setPhasors({phasor(1.0), phasor(2.0)}), std::logic_error);
    EXPECT_TRUE(times.empty());
    EXPECT_EQ((std::vector<AnalogPhasor>{phasor(5.0), AnalogPhasor(), AnalogPhasor()}), group.getPhasors());
}

TEST_F(DeviceAnalogGroupTest, ThreadSetsWhileThisThreadReads)
{
    Zem::AutoResetEvent finished;
    std::thread test([this, &finished] {
        for (int step = 1; step <= 500; ++step)
            group.setPhasors({phasor(step), phasor(step), phasor(step)});
        finished.set();
    });
    // Every reading is one whole set: all channels carry the same step.
    bool isFinished = false;
    while (!isFinished) {
        const std::vector<AnalogPhasor> seen = group.getPhasors();
        EXPECT_EQ(seen[0], seen[2]);
        isFinished = finished.waitOne(std::chrono::milliseconds(0));
    }
    test.join();
    EXPECT_EQ(500u, times.size());
    EXPECT_EQ(500.0, group.getPhasor(2).amplitude);
}

} // namespace
