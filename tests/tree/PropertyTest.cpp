#include "TreeTestNodes.h"
#include "core/tree/BooleanProperty.h"
#include "core/tree/MeasureProperty.h"
#include "core/tree/Measures.h"
#include "core/tree/NumericProperty.h"
#include "core/tree/StringProperty.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using namespace ZemTree;
using TreeTest::loadFromString;
using TreeTest::makeMode;
using TreeTest::saveToString;
using TreeTest::TestGroup;

namespace {

// A unit with one property of each kind, hung the way units hang them, under a locked structure.
struct PropertyUnit {
    explicit PropertyUnit(const std::string& text = "", bool flag = false, double number = 0.0,
                          Measure* measure = nullptr)
        : unit("Unit")
    {
        unit.lockContainer();
        text_ = static_cast<StringProperty*>(unit.addPropertyInner(
            std::make_unique<StringProperty>("ChannelType", LocalString("Channel type"), LocalString(), text, true)));
        flag_ = static_cast<BooleanProperty*>(
            unit.addPropertyInner(std::make_unique<BooleanProperty>("enableState", LocalString("On"), "", flag)));
        number_ = static_cast<NumericProperty*>(
            unit.addPropertyInner(std::make_unique<NumericProperty>("GroupCount", LocalString("Count"), "", number)));
        measure_ = static_cast<MeasureProperty*>(
            unit.addPropertyInner(std::make_unique<MeasureProperty>("Measure", LocalString("Measure"), "", measure)));
    }

    TestGroup unit;
    StringProperty* text_;
    BooleanProperty* flag_;
    NumericProperty* number_;
    MeasureProperty* measure_;
};

} // namespace

TEST(PropertyTest, ValuesRoundTripWithTheirOwner)
{
    for (std::uint8_t kind : {SerializationMode::System, SerializationMode::User}) {
        SCOPED_TRACE(static_cast<int>(kind));
        std::vector<std::string> problems;
        const SerializationMode mode = makeMode(kind, &problems);

        const PropertyUnit original("hardware \"Binary\" <in>", true, 1.0 / 3.0, Measures::Ohm());
        const std::string saved = saveToString(original.unit, mode);

        PropertyUnit loaded;
        loadFromString(loaded.unit, saved, mode);
        EXPECT_TRUE(problems.empty()) << (problems.empty() ? "" : problems.front());
        EXPECT_EQ(loaded.text_->getValue(), "hardware \"Binary\" <in>");
        EXPECT_TRUE(loaded.flag_->getValue());
        EXPECT_NEAR(loaded.number_->getValue(), 1.0 / 3.0, 1e-15);
        EXPECT_EQ(loaded.measure_->getValue(), Measures::Ohm());
        EXPECT_EQ(saveToString(loaded.unit, mode), saved);

        // The unset values go back as well: a null measure, an empty text, false.
        const PropertyUnit empty;
        loadFromString(loaded.unit, saveToString(empty.unit, mode), mode);
        EXPECT_EQ(loaded.text_->getValue(), "");
        EXPECT_FALSE(loaded.flag_->getValue());
        EXPECT_EQ(loaded.number_->getValue(), 0.0);
        EXPECT_EQ(loaded.measure_->getValue(), nullptr);
    }
}

TEST(PropertyTest, BadTextIsReportedAndLeavesTheValue)
{
    struct Row {
        const char* id;
        const char* text;
    };
    const Row rows[] = {{"enableState", "maybe"}, {"GroupCount", "2,5"}, {"Measure", "Parsec"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.id) + " = '" + row.text + "'");
        std::vector<std::string> problems;
        const SerializationMode mode = makeMode(SerializationMode::User, &problems);
        PropertyUnit loaded("kept", true, 4.0, Measures::Volt());
        const std::string text = std::string("<Root><Node Id=\"Unit\"><Node Id=\"") + row.id + "\" Value=\"" + row.text
                                 + "\"/><Node Id=\"ChannelType\" Value=\"after\"/></Node></Root>";
        loadFromString(loaded.unit, text, mode);
        ASSERT_EQ(problems.size(), 1u);
        EXPECT_NE(problems.front().find(row.id), std::string::npos) << problems.front();
        EXPECT_TRUE(loaded.flag_->getValue());
        EXPECT_EQ(loaded.number_->getValue(), 4.0);
        EXPECT_EQ(loaded.measure_->getValue(), Measures::Volt());
        // Reading went on with the next property.
        EXPECT_EQ(loaded.text_->getValue(), "after");
    }
}

TEST(PropertyTest, SetterComparesFirstAndSignalsInOrder)
{
    PropertyUnit owner;
    NumericProperty& number = *owner.number_;
    std::vector<std::string> events;
    number.getSignalValueOutChanged().connect([&] { events.push_back("out " + std::to_string(number.getValue())); });
    number.getSignalValueChanged().connect([&] { events.push_back("value"); });

    number.setValue(0.0);
    EXPECT_TRUE(events.empty());
    number.setData(2.0);
    EXPECT_EQ(events, (std::vector<std::string>{"out 2.000000", "value"}));

    const double quietNan = std::numeric_limits<double>::quiet_NaN();
    number.setValue(quietNan);
    number.setValue(quietNan);
    EXPECT_EQ(events.size(), 4u);
}
