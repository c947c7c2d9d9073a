#include "contacts/AnalogOutputTarget.h"

#include "ContactTestSupport.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using ContactTestSupport::readInto;
using ContactTestSupport::StructureCounter;
using ContactTestSupport::textOf;
using ZemTree::AnalogOutputTarget;

TEST(AnalogOutputTargetTest, TextIsThePathOrElseTheNumber)
{
    AnalogOutputTarget withBoth(4);
    withBoth.setPath("AnalogOutputs/Group 2");
    EXPECT_EQ("4", textOf(AnalogOutputTarget(4)));
    EXPECT_EQ("AnalogOutputs/Group 2", textOf(withBoth));
    EXPECT_EQ("1", textOf(AnalogOutputTarget("")));
}

TEST(AnalogOutputTargetTest, ReadingNeverFails)
{
    const struct {
        const char* text;
        bool old;
        int number;
        const char* path;
    } rows[] = {
        {"7", false, 7, ""},
        {"007", false, 7, ""},
        {"Analog/Group 3", false, 1, "Analog/Group 3"},
        {"", false, 1, ""},
        {" 3", false, 1, " 3"},
        {"-1", false, 1, "-1"},
        {"!2", false, 1, "!2"},
        // Begins with a digit but is no whole number: the target stays as it was.
        {"12a", true, 0, ""},
        {"2 Group", true, 0, ""},
        {"3 ", true, 0, ""},
        {"99999999999", true, 0, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string("'") + row.text + "'");
        AnalogOutputTarget target("Old");
        target.setNumber(9);
        const auto state = readInto(target, row.text);
        EXPECT_FALSE(state.bad);
        EXPECT_FALSE(state.fail);
        EXPECT_EQ(row.old ? 9 : row.number, target.getNumber());
        EXPECT_EQ(row.old ? "Old" : row.path, target.getPath());
    }
}

TEST(AnalogOutputTargetTest, SettersEmitOnlyOnARealChange)
{
    AnalogOutputTarget target(2);
    target.setPath("P");
    StructureCounter counter(target);
    target.setNumber(2);
    target.setPath("P");
    EXPECT_EQ(0, counter.count);
    target.setNumber(3);
    EXPECT_EQ("P", target.getPath()) << "a new number leaves the path";
    target.setPath("Q");
    EXPECT_EQ(2, counter.count);
    EXPECT_EQ(2, target.getIndex());
}

TEST(AnalogOutputTargetTest, ReadingAndCopiesDoNotCarrySubscribers)
{
    AnalogOutputTarget target(2);
    StructureCounter counter(target);
    AnalogOutputTarget copy(target);
    copy.setNumber(5);
    readInto(target, "4");
    EXPECT_EQ(0, counter.count);
    target.setNumber(6);
    EXPECT_EQ(0, counter.count) << "reading replaced the subscribers";
}

} // namespace
