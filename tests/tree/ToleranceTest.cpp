#include "core/tree/Tolerance.h"

#include "core/common/ConvertionHelper.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using ZemTree::RangeStructure;
using ZemTree::Tolerance;
using ZemTree::ToleranceItem;

std::unique_ptr<ToleranceItem> item(double from, double to, Zem::Nullable<RangeStructure> relative,
                                    Zem::Nullable<RangeStructure> absolute)
{
    return std::make_unique<ToleranceItem>(RangeStructure::Standart(from, to), relative, absolute);
}

std::string textOf(const Tolerance& tolerance)
{
    std::ostringstream stream;
    tolerance >> stream;
    return stream.str();
}

TEST(ToleranceTest, TextReadsBackToTheSameTolerance)
{
    const RangeStructure five = RangeStructure::Standart(-5.0, 5.0);
    const RangeStructure small = RangeStructure::Standart(-0.01, 0.02);
    const double inf = std::numeric_limits<double>::infinity();

    Tolerance empty;
    Tolerance one;
    one.add(item(0.0, 10.0, five, {}));
    Tolerance several;
    several.add(item(-inf, 1.0, {}, small));
    several.add(item(1.0, 2.0 / 3.0 * 10.0, five, small));
    several.add(item(7.0, inf, {}, {}));
    several.add(std::make_unique<ToleranceItem>());

    const struct {
        const Tolerance* tolerance;
        const char* text;
    } rows[] = {
        {&empty, ""},
        {&one, "[0;10]:[-5;5]|"},
        {&several, nullptr},
    };
    for (const auto& row : rows) {
        const std::string text = textOf(*row.tolerance);
        SCOPED_TRACE(text);
        if (row.text != nullptr) {
            EXPECT_EQ(row.text, text);
        }
        std::shared_ptr<Tolerance> back;
        ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<Tolerance>, true, true>(text, back)));
        ASSERT_NE(nullptr, back);
        EXPECT_TRUE(back->isEqualTo(*row.tolerance));
        EXPECT_EQ(text, (Zem::convertToString<std::shared_ptr<Tolerance>, true, true>(back)));
    }
    EXPECT_EQ("[-inf;1]:|[-0.01;0.02] [1;6.666666666666666]:[-5;5]|[-0.01;0.02] [7;inf]:| []:|", textOf(several));
}

TEST(ToleranceTest, MalformedTextSetsBadbitAndKeepsTheItems)
{
    for (const char* text :
         {" ", "[0;1]:| ", "[0;1]:|  [1;2]:|", "[0;1]", "[0;1]:[1;2]", "[0;1]:|:|", "[a;1]:|", "[0;1]:[2;1]|"}) {
        SCOPED_TRACE(text);
        Tolerance tolerance;
        tolerance.add(item(1.0, 2.0, RangeStructure::Standart(-1.0, 1.0), {}));
        std::istringstream stream(text);
        tolerance << stream;
        EXPECT_TRUE(stream.bad());
        ASSERT_EQ(1u, tolerance.size());
        EXPECT_EQ(RangeStructure::Standart(1.0, 2.0), tolerance.at(0)->getArgument());
    }
}

TEST(ToleranceTest, ReadingReplacesTheItemsAndSignals)
{
    Tolerance tolerance;
    tolerance.add(item(0.0, 1.0, {}, {}));
    tolerance.add(item(1.0, 2.0, {}, {}));
    int signals = 0;
    tolerance.getSignalStructureChanged().connect([&signals] { ++signals; });

    std::istringstream stream("[5;6]:[-1;1]|");
    tolerance << stream;
    EXPECT_FALSE(stream.bad());
    ASSERT_EQ(1u, tolerance.size());
    EXPECT_EQ(RangeStructure::Standart(5.0, 6.0), tolerance.at(0)->getArgument());
    EXPECT_EQ(RangeStructure::Standart(-1.0, 1.0), tolerance.at(0)->getRelative().getValue());
    EXPECT_FALSE(tolerance.at(0)->getAbsolute().hasValue());
    EXPECT_EQ(3, signals); // two removals and one addition

    std::istringstream bad("[5;6]:[-1;1]");
    tolerance << bad;
    EXPECT_EQ(3, signals);
}

TEST(ToleranceTest, ItemChangesReachTheToleranceOnce)
{
    Tolerance tolerance;
    ToleranceItem* first = tolerance.add(item(0.0, 1.0, {}, {}));
    int signals = 0;
    tolerance.getSignalStructureChanged().connect([&signals] { ++signals; });

    first->setRelative(RangeStructure::Standart(-2.0, 2.0));
    EXPECT_EQ(1, signals);
    first->setRelative(RangeStructure::Standart(-2.0, 2.0));
    first->setAbsolute(Zem::Nullable<RangeStructure>());
    first->setArgument(RangeStructure::Standart(1.0, 0.0));
    EXPECT_EQ(1, signals); // equal values change nothing
    first->setAbsolute(RangeStructure());
    first->setArgument(RangeStructure::Standart(0.0, 3.0));
    EXPECT_EQ(3, signals);

    std::istringstream same("[0;3]:[-2;2]|[]");
    *first << same;
    EXPECT_EQ(3, signals);

    std::unique_ptr<ToleranceItem> removed = tolerance.release(first);
    EXPECT_EQ(4, signals);
    removed->setArgument(RangeStructure());
    EXPECT_EQ(4, signals);
}

} // namespace
