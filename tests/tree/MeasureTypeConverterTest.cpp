#include "core/tree/MeasureTypeConverter.h"

#include "core/tree/Measure.h"
#include "core/tree/Measures.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace {

using ZemTree::Measure;
using ZemTree::Measures;
using ZemTree::MeasureTypeConverter;

TEST(MeasureTypeConverterTest, EveryInstanceRoundTrips)
{
    const Measure* const named[] = {Measures::None(), Measures::Ohm(),    Measures::Gradus(), Measures::Second(),
                                    Measures::Volt(), Measures::Ampere(), Measures::Hertz(),  Measures::Percent()};
    EXPECT_EQ(std::size(named), Measures::all().size());

    std::set<std::string> keys;
    for (const Measure* measure : named) {
        ASSERT_NE(nullptr, measure);
        SCOPED_TRACE(measure->getKey());
        const std::string text = MeasureTypeConverter::toStringData(measure);
        EXPECT_EQ(measure, MeasureTypeConverter::fromStringData(text));
        EXPECT_EQ(measure, Measures::find(measure->getKey()));
        keys.insert(text);
    }
    EXPECT_EQ(std::size(named), keys.size());
}

TEST(MeasureTypeConverterTest, UnknownTextGivesNull)
{
    for (const char* text : {"", "ohm", "Ohm ", "Ом"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(nullptr, MeasureTypeConverter::fromStringData(text));
    }
    EXPECT_EQ("", MeasureTypeConverter::toStringData(nullptr));
}

} // namespace
