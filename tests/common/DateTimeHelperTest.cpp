#include "core/common/DateTimeHelper.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using Zem::DateTimeHelper;
using namespace std::chrono_literals;

// 2023-11-14 22:13:20.123 UTC.
constexpr std::int64_t sampleMs = 1700000000123;

// Pins the time zone for the test and restores the one the process had.
class DateTimeHelperTest : public ::testing::Test {
protected:
    void SetUp() override { setZone("UTC"); }
    void TearDown() override
    {
        if (_oldTz != nullptr)
            setZone(_oldTz->c_str());
        else
            unsetenv("TZ");
        tzset();
    }
    static void setZone(const char* zone)
    {
        setenv("TZ", zone, 1);
        tzset();
    }

private:
    const std::unique_ptr<const std::string> _oldTz =
        std::getenv("TZ") == nullptr ? nullptr : std::make_unique<const std::string>(std::getenv("TZ"));
};

TEST_F(DateTimeHelperTest, DisplayTimeUsesTheFormatInLocalTime)
{
    const auto time = DateTimeHelper::fromMilliseconds(sampleMs);
    EXPECT_EQ(DateTimeHelper::getDisplayTimeString(time, "%d.%m.%Y %H:%M:%S"), "14.11.2023 22:13:20");
    EXPECT_EQ(DateTimeHelper::getDisplayTimeString(time, ""), "");

    // Three hours east of UTC the same instant is already the next day.
    setZone("UTC-3");
    EXPECT_EQ(DateTimeHelper::getDisplayTimeString(time, "%d.%m.%Y %H:%M:%S"), "15.11.2023 01:13:20");
}

TEST_F(DateTimeHelperTest, DisplayTimeGrowsItsBufferForLongTexts)
{
    std::string format;
    std::string expected;
    for (int i = 0; i < 100; ++i) {
        format += "%Y-";
        expected += "2023-";
    }
    EXPECT_EQ(DateTimeHelper::getDisplayTimeString(DateTimeHelper::fromMilliseconds(sampleMs), format), expected);
}

TEST_F(DateTimeHelperTest, DisplayDuration)
{
    struct Row {
        const char* name;
        std::chrono::milliseconds duration;
        const char* format;
        const char* expected;
    };
    const Row rows[] = {
        {"under a second", 999ms, "%02d:%02d:%02d", "00:00:00"},
        {"h m s", 3725000ms, "%02d:%02d:%02d", "01:02:05"},
        {"more than a day", 90061000ms, "%02d:%02d:%02d", "25:01:01"},
        {"negative", -5000ms, "%02d:%02d:%02d", "00:00:00"},
        {"other format", 3725000ms, "%d h %d min %d s", "1 h 2 min 5 s"},
    };
    const auto start = DateTimeHelper::fromMilliseconds(sampleMs);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DateTimeHelper::getDisplayDurationString(start, start + row.duration, row.format), row.expected);
    }
}

TEST_F(DateTimeHelperTest, EpochCounts)
{
    const auto time = DateTimeHelper::fromMilliseconds(sampleMs);
    EXPECT_EQ(DateTimeHelper::toMilliseconds(time), sampleMs);
    EXPECT_EQ(DateTimeHelper::fromNanoseconds(DateTimeHelper::toNanoseconds(time)), time);
    // Parts below a millisecond are cut, not rounded.
    EXPECT_EQ(DateTimeHelper::toMilliseconds(DateTimeHelper::fromNanoseconds(1999999)), 1);
}

} // namespace
