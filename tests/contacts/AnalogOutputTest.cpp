#include "ContactTestSupport.h"
#include "contacts/AnalogOutputRedirectCollection.h"
#include "contacts/AnalogOutputTarget.h"
#include "core/tree/TreeLocalization.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

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

using ZemTree::AnalogOutputRedirectCollection;

class LockableRedirectCollection : public AnalogOutputRedirectCollection {
public:
    void lock() { _lockCollection(); }
};

using Target = std::pair<int, std::string>;

std::vector<Target> targetsOf(const AnalogOutputRedirectCollection& collection)
{
    std::vector<Target> targets;
    for (const AnalogOutputTarget* target : collection)
        targets.emplace_back(target->getNumber(), target->getPath());
    return targets;
}

std::unique_ptr<AnalogOutputTarget> pathTarget(const std::string& path, int number)
{
    auto target = std::make_unique<AnalogOutputTarget>(path);
    target->setNumber(number);
    return target;
}

TEST(AnalogOutputRedirectCollectionTest, TextJoinsTheTargetsWithSemicolons)
{
    AnalogOutputRedirectCollection collection;
    EXPECT_EQ("", textOf(collection));
    collection.add(std::make_unique<AnalogOutputTarget>(2));
    collection.add(pathTarget("Analog/Group 3", 5));
    collection.add(std::make_unique<AnalogOutputTarget>(1));
    EXPECT_EQ("2;Analog/Group 3;1", textOf(collection));
}

TEST(AnalogOutputRedirectCollectionTest, ReadingTable)
{
    const struct {
        const char* text;
        std::vector<Target> targets;
    } rows[] = {
        {"", {}},
        {"2;Analog/Group 3;", {{2, ""}, {1, "Analog/Group 3"}, {1, ""}}},
        {"12a", {{1, ""}}},
        {";", {{1, ""}, {1, ""}}},
        {"3;2 Group;x", {{3, ""}, {1, ""}, {1, "x"}}},
        {"AnalogOutputs/Group 1|2", {{1, "AnalogOutputs/Group 1|2"}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string("'") + row.text + "'");
        AnalogOutputRedirectCollection collection;
        collection.add(std::make_unique<AnalogOutputTarget>(8));
        const auto state = readInto(collection, row.text);
        EXPECT_FALSE(state.bad);
        EXPECT_EQ(row.targets, targetsOf(collection));
    }
}

TEST(AnalogOutputRedirectCollectionTest, CloneCopiesOnlyWhatTheTextHolds)
{
    AnalogOutputRedirectCollection original;
    original.add(pathTarget("Analog/Group 3", 5));
    original.add(pathTarget("3rd group", 4));
    original.add(pathTarget("12", 7));
    original.add(std::make_unique<AnalogOutputTarget>(2));
    StructureCounter counter(original);

    const std::shared_ptr<AnalogOutputRedirectCollection> copy = original.clone();
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ((std::vector<Target>{{1, "Analog/Group 3"}, {1, ""}, {12, ""}, {2, ""}}), targetsOf(*copy));
    copy->at(0)->setPath("Other");
    copy->remove(copy->at(3));
    EXPECT_EQ(0, counter.count);
    EXPECT_EQ(4u, original.size());
}

TEST(AnalogOutputRedirectCollectionTest, LockedCollectionRefusesReading)
{
    LockableRedirectCollection collection;
    collection.add(std::make_unique<AnalogOutputTarget>(3));
    collection.lock();
    EXPECT_THAT([&] { readInto(collection, "1;2"); },
                ::testing::ThrowsMessage<std::logic_error>(::testing::StrEq(lng::Tree::get("error.ReadOnly"))));
    EXPECT_EQ((std::vector<Target>{{3, ""}}), targetsOf(collection));
}

TEST(AnalogOutputRedirectCollectionTest, StructureSignalForChangesInsideAndOfTheList)
{
    AnalogOutputRedirectCollection collection;
    StructureCounter counter(collection);
    AnalogOutputTarget* target = collection.add(std::make_unique<AnalogOutputTarget>(1));
    target->setNumber(1);
    EXPECT_EQ(1, counter.count);
    target->setPath("AnalogOutputs/Group 2");
    EXPECT_EQ(2, counter.count);
    readInto(collection, "1;2;3");
    EXPECT_EQ(6, counter.count);
}

} // namespace
