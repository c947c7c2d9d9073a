#include "core/tree/ToleranceHelper.h"

#include "core/tree/Tolerance.h"
#include "core/tree/ToleranceReduced.h"
#include "core/tree/ToleranceReducedTypeConverter.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>

namespace {

using ZemTree::RangeStructure;
using ZemTree::Tolerance;
using ZemTree::ToleranceHelper;
using ZemTree::ToleranceItem;
using ZemTree::ToleranceReduced;

RangeStructure symmetric(double half)
{
    return RangeStructure::Standart(-half, half);
}

void addItem(Tolerance& tolerance, double from, double to, double relative)
{
    tolerance.add(std::make_unique<ToleranceItem>(RangeStructure::Standart(from, to), symmetric(relative),
                                                  Zem::Nullable<RangeStructure>()));
}

TEST(ToleranceHelperTest, ReduceFollowsTheItemsWithGapsAndEnds)
{
    // Items given out of order, overlapping on [2;3] and with a gap from 5 to 8.
    Tolerance tolerance;
    addItem(tolerance, 2.0, 5.0, 2.0);
    addItem(tolerance, 0.0, 3.0, 1.0);
    addItem(tolerance, 8.0, 10.0, 3.0);
    tolerance.add(std::make_unique<ToleranceItem>()); // applies nowhere
    const ToleranceReduced zero = ToleranceReduced::Zero();
    const auto relative = [](double half) { return ToleranceReduced(symmetric(half), {}); };

    const struct {
        double value;
        ToleranceReduced expected;
        const char* text;
    } rows[] = {
        {-1.0, relative(1.0), "below all: the lowest item"},
        {1.5, relative(1.0), "inside the second item only"},
        {2.5, relative(2.0), "overlap: the first item in the list"},
        {5.0, relative(2.0), "high bound included"},
        {6.0, zero, "in the gap"},
        {8.0, relative(3.0), "after the gap"},
        {1e9, relative(3.0), "above all: the highest item"},
        {std::nan(""), zero, "not a number"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const std::shared_ptr<ToleranceReduced> reduced = ToleranceHelper::reduce(&tolerance, row.value);
        ASSERT_NE(nullptr, reduced);
        EXPECT_EQ(ZemTree::ToleranceReducedTypeConverter::toStringData(row.expected),
                  ZemTree::ToleranceReducedTypeConverter::toStringData(*reduced));
    }
}

TEST(ToleranceHelperTest, NoItemsGiveTheZeroTolerance)
{
    Tolerance empty;
    Tolerance nowhere;
    nowhere.add(std::make_unique<ToleranceItem>());
    const Tolerance* const tolerances[] = {nullptr, &empty, &nowhere};
    for (const Tolerance* tolerance : tolerances) {
        const std::shared_ptr<ToleranceReduced> reduced = ToleranceHelper::reduce(tolerance, 1.0);
        ASSERT_NE(nullptr, reduced);
        EXPECT_EQ(ToleranceReduced::Zero(), *reduced);
    }
}

} // namespace
