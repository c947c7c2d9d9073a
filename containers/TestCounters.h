#pragma once

#include <cstdint>

namespace ZemTree {

// How many results of a subtree are good, bad or missing.
struct TestCounters {
    std::uint32_t okCount = 0;
    std::uint32_t failedCount = 0;
    std::uint32_t notTestedCount = 0;

    TestCounters& operator+=(const TestCounters& other)
    {
        okCount += other.okCount;
        failedCount += other.failedCount;
        notTestedCount += other.notTestedCount;
        return *this;
    }
    bool operator==(const TestCounters& other) const
    {
        return okCount == other.okCount && failedCount == other.failedCount && notTestedCount == other.notTestedCount;
    }
    bool operator!=(const TestCounters& other) const { return !(*this == other); }
};

} // namespace ZemTree
