#include "core/common/PointsSequence.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

using Zem::PointF;
using Zem::PointsSequence;

constexpr float Inf = std::numeric_limits<float>::infinity();
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();

PointsSequence makeSequence(std::vector<PointF> points)
{
    return PointsSequence(std::move(points), Zem::Color::Blue(), "", true, false);
}

struct RangeRow {
    const char* name;
    std::vector<PointF> points;
    float min, max;                 // the range handed in
    float expectedMin, expectedMax; // along x; y is checked on the transposed points
};

TEST(PointsSequenceTest, RangesWidenWhatTheyAreGiven)
{
    const std::vector<RangeRow> rows = {
        {"empty leaves a normal range", {}, -2.0f, 5.0f, -2.0f, 5.0f},
        {"from an empty range", {{3, 0}, {-1, 0}, {2, 0}}, Inf, -Inf, -1.0f, 3.0f},
        {"only the max side widens", {{3, 0}, {12, 0}}, -10.0f, 10.0f, -10.0f, 12.0f},
        // The min test comes first for each point, so an inverted (min > max) incoming range still collapses
        // onto the points.
        {"inverted finite range", {{4, 0}}, 100.0f, -100.0f, 4.0f, 4.0f},
        {"NaN never enters", {{NaN, 0}, {1, 0}, {NaN, 0}}, Inf, -Inf, 1.0f, 1.0f},
        {"infinity enters", {{Inf, 0}, {-Inf, 0}, {1, 0}}, 0.0f, 1.0f, -Inf, Inf},
    };
    for (const RangeRow& row : rows) {
        SCOPED_TRACE(row.name);
        float minX = row.min;
        float maxX = row.max;
        makeSequence(row.points).getRangeX(minX, maxX);
        EXPECT_EQ(minX, row.expectedMin);
        EXPECT_EQ(maxX, row.expectedMax);

        std::vector<PointF> transposed;
        for (const PointF& point : row.points)
            transposed.emplace_back(point.y, point.x);
        float minY = row.min;
        float maxY = row.max;
        makeSequence(transposed).getRangeY(minY, maxY);
        EXPECT_EQ(minY, row.expectedMin);
        EXPECT_EQ(maxY, row.expectedMax);
    }
}

} // namespace
