#include "core/tree/MeasureTypeConverter.h"

#include "core/tree/Measure.h"
#include "core/tree/Measures.h"
#include "core/tree/TreeLocalization.h"

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
        EXPECT_FALSE(text.empty());
        EXPECT_EQ(measure, MeasureTypeConverter::fromStringData(text));
        EXPECT_EQ(measure, Measures::find(measure->getKey()));
        keys.insert(text);
    }
    EXPECT_EQ(std::size(named), keys.size());
}

TEST(MeasureTypeConverterTest, UnknownTextGivesNull)
{
    for (const char* text : {"", "ohm", " Ohm", "Ohm ", "Kilogram", "Ом", "None\n"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(nullptr, MeasureTypeConverter::fromStringData(text));
    }
    EXPECT_EQ("", MeasureTypeConverter::toStringData(nullptr));
}

TEST(MeasureTest, DescriptionFollowsLanguage)
{
    const int saved = lng::language;
    lng::language = 0;
    const std::string english = Measures::Ohm()->getDescription();
    const std::string second = Measures::Second()->getDescription();
    lng::language = 1;
    const std::string russian = Measures::Ohm()->getDescription();
    lng::language = saved;

    EXPECT_EQ("Ohm", english);
    EXPECT_EQ("Ом", russian);
    EXPECT_EQ("s", second);
}

} // namespace
