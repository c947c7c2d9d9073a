#include "results/graph/GraphManagerHelper.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using ZemTree::GraphManagerHelper;

TEST(GraphManagerHelperTest, DoublesBeyondTheFloatsBecomeInfinities)
{
    const float largest = std::numeric_limits<float>::max();
    const float inf = std::numeric_limits<float>::infinity();
    const struct {
        double value;
        float expected;
    } rows[] = {
        {0.1, 0.1f},
        // Less than half a float step above the largest float still rounds down to it.
        {static_cast<double>(largest) * (1.0 + 1e-9), largest},
        {1e39, inf},
        {-1e39, -inf},
        {1e-50, 0.0f},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(GraphManagerHelper::toFloat(row.value), row.expected);
    }
    EXPECT_TRUE(std::isnan(GraphManagerHelper::toFloat(std::nan(""))));
}

} // namespace
