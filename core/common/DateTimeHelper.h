#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace Zem {

// Time stamps as report texts and as integers for files.
class DateTimeHelper {
public:
    using TimePoint = std::chrono::system_clock::time_point;

    DateTimeHelper() = delete;

    // `time` in local time, written with a strftime `format` such as "%d.%m.%Y" or "%H:%M:%S".
    // An empty format, or a time that local time cannot express, gives an empty text.
    static std::string getDisplayTimeString(TimePoint time, const std::string& format);

    // The time from `start` to `finish` in whole seconds, written with a printf `format` that takes three ints:
    // hours, minutes, seconds, e.g. "%02d:%02d:%02d". Hours are not wrapped at a day; a negative duration
    // shows as zero.
    static std::string getDisplayDurationString(TimePoint start, TimePoint finish, const std::string& format);

    // Counts since the epoch, 1970-01-01 00:00:00 UTC. Sub-unit parts are cut toward zero.
    static std::int64_t toMilliseconds(TimePoint time);
    static TimePoint fromMilliseconds(std::int64_t milliseconds);
    static std::int64_t toNanoseconds(TimePoint time);
    static TimePoint fromNanoseconds(std::int64_t nanoseconds);
};

} // namespace Zem
