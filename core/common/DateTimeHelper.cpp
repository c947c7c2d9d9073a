#include "core/common/DateTimeHelper.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace Zem {

namespace {

// strftime has no room for results longer than this; no sensible format comes near it.
constexpr std::size_t maxTimeTextSize = 4096;

} // namespace

std::string DateTimeHelper::getDisplayTimeString(TimePoint time, const std::string& format)
{
    if (format.empty())
        return std::string();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm local{};
    if (!localtime_r(&seconds, &local))
        return std::string();

    // strftime returns 0 both for an empty result and for a buffer that is too small; the added blank makes
    // every result non-empty, so 0 always means "grow the buffer".
    const std::string padded = format + ' ';
    for (std::size_t size = 64; size <= maxTimeTextSize; size *= 2) {
        std::vector<char> buffer(size);
        const std::size_t written = std::strftime(buffer.data(), buffer.size(), padded.c_str(), &local);
        if (written > 0)
            return std::string(buffer.data(), written - 1);
    }
    return std::string();
}

std::string DateTimeHelper::getDisplayDurationString(TimePoint start, TimePoint finish, const std::string& format)
{
    using namespace std::chrono;
    const std::int64_t total = finish > start ? duration_cast<seconds>(finish - start).count() : 0;
    // Hours beyond the range of int cannot come from real runs; clamp rather than overflow.
    const std::int64_t hours = std::min<std::int64_t>(total / 3600, 2147483647);
    const int minutes = static_cast<int>(total / 60 % 60);
    const int secs = static_cast<int>(total % 60);

    const int needed = std::snprintf(nullptr, 0, format.c_str(), static_cast<int>(hours), minutes, secs);
    if (needed <= 0)
        return std::string();
    std::vector<char> buffer(static_cast<std::size_t>(needed) + 1);
    std::snprintf(buffer.data(), buffer.size(), format.c_str(), static_cast<int>(hours), minutes, secs);
    return std::string(buffer.data(), static_cast<std::size_t>(needed));
}

std::int64_t DateTimeHelper::toMilliseconds(TimePoint time)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count();
}

DateTimeHelper::TimePoint DateTimeHelper::fromMilliseconds(std::int64_t milliseconds)
{
    return TimePoint(std::chrono::duration_cast<TimePoint::duration>(std::chrono::milliseconds(milliseconds)));
}

std::int64_t DateTimeHelper::toNanoseconds(TimePoint time)
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(time.time_since_epoch()).count();
}

DateTimeHelper::TimePoint DateTimeHelper::fromNanoseconds(std::int64_t nanoseconds)
{
    return TimePoint(std::chrono::duration_cast<TimePoint::duration>(std::chrono::nanoseconds(nanoseconds)));
}

} // namespace Zem
