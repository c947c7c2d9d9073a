#include "core/tree/MeasureObject.h"

#include "core/tree/MeasureProperty.h"
#include "core/tree/Measures.h"

#include <gtest/gtest.h>
#include <memory>

using namespace ZemTree;

TEST(MeasureObjectTest, FollowsThePropertysMeasure)
{
    MeasureProperty property("Measure", LocalString("Measure"), LocalString(), Measures::Ohm());
    MeasureObject object(&property);
    int fired = 0;
    object.getSignalMeasureChanged().connect([&] {
        ++fired;
        EXPECT_EQ(object.getMeasureValue(), Measures::Second());
    });
    EXPECT_EQ(object.getMeasureValue(), Measures::Ohm());
    property.setValue(Measures::Second());
    EXPECT_EQ(fired, 1);
    property.setValue(Measures::Second());
    EXPECT_EQ(fired, 1);
}

TEST(MeasureObjectTest, WithoutMeasureGivesNone)
{
    EXPECT_EQ(MeasureObject(nullptr).getMeasureValue(), Measures::None());
    MeasureProperty empty;
    EXPECT_EQ(MeasureObject(&empty).getMeasureValue(), Measures::None());

    // A property destroyed first is forgotten, not read.
    auto property = std::make_unique<MeasureProperty>("Measure", LocalString(), LocalString(), Measures::Volt());
    const MeasureObject object(property.get());
    property.reset();
    EXPECT_EQ(object.getMeasure(), nullptr);
    EXPECT_EQ(object.getMeasureValue(), Measures::None());
}
