#include "core/calculate/PolygonHelper.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

using Zem::PointF;
using ZemCalculate::isPointInPoligon;

struct Row {
    const char* name;
    std::vector<PointF> polygon;
    PointF point;
    bool expected;
};

const std::vector<PointF> Square = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
// A "U": the notch between the arms, x in (1, 3) and y above 1, is outside.
const std::vector<PointF> Notched = {{0, 0}, {4, 0}, {4, 4}, {3, 4}, {3, 1}, {1, 1}, {1, 4}, {0, 4}};
// A quadrilateral whose edges cross at (1, 1): two triangles meeting at a point.
const std::vector<PointF> BowTie = {{0, 0}, {2, 2}, {2, 0}, {0, 2}};

TEST(PolygonHelperTest, PointInPoligonTable)
{
    constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
    const float third = 4.0f / 3.0f;
    const std::vector<Row> rows = {
        {"inside a convex polygon", Square, {2, 2}, true},
        {"outside in line with an edge", Square, {6, 0}, false},
        {"on the closing edge", Square, {0, 1}, true},
        {"on a corner", Square, {4, 4}, true},
        {"just outside an edge", Square, {4.01f, 2}, false},
        {"in the left arm of a U", Notched, {0.5f, 3}, true},
        {"in the notch of a U", Notched, {2, 3}, false},
        {"level with the notch's inner corners", Notched, {2, 1.5f}, false},
        {"on the notch's inner edge", Notched, {2, 1}, true},
        {"ray through two corners of a U", Notched, {-1, 4}, false},
        {"ray through a reflex corner", Notched, {0.5f, 1}, true},
        {"on a diagonal edge, through floats", {{0, 0}, {4, 4}, {4, 0}}, {third, third}, true},
        {"self-crossing, in one triangle", BowTie, {1.8f, 1}, true},
        {"self-crossing, between the triangles", BowTie, {1, 0.2f}, false},
        {"empty polygon", {}, {0, 0}, false},
        {"two corners, the point on the segment", {{0, 0}, {2, 2}}, {1, 1}, false},
        {"NaN point", Square, {NaN, 2}, false},
        {"NaN corner", {{0, 0}, {4, 0}, {NaN, 4}, {0, 4}}, {1, 1}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(isPointInPoligon(row.polygon, row.point), row.expected);
    }
}

// The on-edge tolerance follows the polygon's size: it neither swallows neighbours of a tiny polygon nor misses
// the rounding of a large one.
TEST(PolygonHelperTest, EdgeToleranceScalesWithThePolygon)
{
    const std::vector<PointF> tiny = {{0, 0}, {1e-6f, 0}, {1e-6f, 1e-6f}, {0, 1e-6f}};
    EXPECT_TRUE(isPointInPoligon(tiny, {1e-6f, 5e-7f}));
    EXPECT_FALSE(isPointInPoligon(tiny, {1.01e-6f, 5e-7f}));

    const std::vector<PointF> large = {{-3e6f, -3e6f}, {3e6f, -3e6f}, {0, 3e6f}};
    EXPECT_TRUE(isPointInPoligon(large, {1e6f, 1e6f})); // on the slanted edge
    EXPECT_TRUE(isPointInPoligon(large, {1e6f + 0.1f, 1e6f}));
    EXPECT_FALSE(isPointInPoligon(large, {1e6f + 100.0f, 1e6f}));
}

} // namespace
