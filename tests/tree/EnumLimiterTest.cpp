#include "core/tree/EnumLimiter.h"

#include "TreeTestNodes.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ZemTree;
using TreeTest::loadFromString;
using TreeTest::saveToString;
using TreeTest::TestGroup;

namespace {

std::vector<std::string> valuesOf(const EnumLimiter& limiter)
{
    std::vector<std::string> values;
    for (const EnumItem* item : limiter.getItems())
        values.push_back(item->getValue());
    return values;
}

SerializationMode userMode(std::vector<std::string>* problems)
{
    SerializationMode mode;
    mode.kind = SerializationMode::User;
    mode.problems = problems;
    return mode;
}

} // namespace

TEST(EnumLimiterTest, ChangedFiresOncePerChange)
{
    EnumLimiter limiter;
    int fired = 0;
    std::size_t countSeen = 0;
    limiter.getSignalChanged().connect([&] {
        ++fired;
        countSeen = limiter.count();
    });

    limiter.addItem("a", LocalString("A"));
    limiter.addItem("b", LocalString("B"));
    limiter.addItem("c", LocalString("C"));
    EXPECT_EQ(fired, 3);
    EXPECT_EQ(countSeen, 3u);

    limiter.remove(limiter.findByValue("b"));
    EXPECT_EQ(fired, 4);

    // Clearing several items is one change, told when the list is already empty.
    limiter.clearItems();
    EXPECT_EQ(fired, 5);
    EXPECT_EQ(countSeen, 0u);
    limiter.clearItems();
    EXPECT_EQ(fired, 5);

    // The batch of a clearing is over: the next change is told again.
    limiter.addItem("d", LocalString("D"));
    EXPECT_EQ(fired, 6);
}

TEST(EnumLimiterTest, LockedLimiterRefusesAndStaysSilent)
{
    TestGroup owner("Unit");
    auto* limiter = static_cast<EnumLimiter*>(owner.addPropertyInner(std::make_unique<EnumLimiter>()));
    limiter->addItem("a", LocalString("A"));
    owner.lockChildContainer(limiter);
    int fired = 0;
    limiter->getSignalChanged().connect([&] { ++fired; });

    EXPECT_THROW(limiter->addItem("b", LocalString("B")), std::logic_error);
    EXPECT_THROW(limiter->clearItems(), std::logic_error);
    EXPECT_THROW(limiter->remove(limiter->findByValue("a")), std::logic_error);
    EXPECT_EQ(valuesOf(*limiter), std::vector<std::string>{"a"});
    EXPECT_EQ(fired, 0);
}

TEST(EnumLimiterTest, SavedAndReadWithItsOwner)
{
    std::vector<std::string> problems;
    const SerializationMode mode = userMode(&problems);

    TestGroup original("Unit");
    auto* limiter = static_cast<EnumLimiter*>(original.addPropertyInner(std::make_unique<EnumLimiter>()));
    limiter->addItem("a|1", LocalString::create("First", "Первый"));
    limiter->addItem("", LocalString("Nothing"));
    limiter->addItem("c <&>", LocalString::Empty());
    const std::string saved = saveToString(original, mode);

    // The reader's limiter has items of its own; the file's list replaces them in one change.
    TestGroup loaded("Unit");
    auto* target = static_cast<EnumLimiter*>(loaded.addPropertyInner(std::make_unique<EnumLimiter>()));
    target->addItem("old", LocalString("Old"));
    target->addItem("a|1", LocalString("Stale"));
    int fired = 0;
    target->getSignalChanged().connect([&] { ++fired; });
    loadFromString(loaded, saved, mode);

    EXPECT_TRUE(problems.empty()) << (problems.empty() ? "" : problems.front());
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(valuesOf(*target), (std::vector<std::string>{"a|1", "", "c <&>"}));
    EXPECT_EQ(target->findByValue("a|1")->getDisplay().getValue("ru"), "Первый");
    EXPECT_EQ(saveToString(loaded, mode), saved);
}

TEST(EnumLimiterTest, LockedLimiterKeepsItsItemsOnReading)
{
    std::vector<std::string> problems;
    const SerializationMode mode = userMode(&problems);
    TestGroup original("Unit");
    auto* limiter = static_cast<EnumLimiter*>(original.addPropertyInner(std::make_unique<EnumLimiter>()));
    limiter->addItem("fromFile", LocalString("From file"));
    const std::string saved = saveToString(original, mode);

    TestGroup loaded("Unit");
    auto* target = static_cast<EnumLimiter*>(loaded.addPropertyInner(std::make_unique<EnumLimiter>()));
    target->addItem("fromCode", LocalString("From code"));
    loaded.lockChildContainer(target);
    loadFromString(loaded, saved, mode);
    EXPECT_EQ(valuesOf(*target), std::vector<std::string>{"fromCode"});
}

TEST(EnumLimiterTest, BrokenItemsAreReportedAndReadingGoesOn)
{
    std::vector<std::string> problems;
    const SerializationMode mode = userMode(&problems);
    const std::string text =
        "<Root><Node Id=\"Unit\"><Node Id=\"Limiter\">"
        "<Node Id=\"a\" Value=\"a\"><Display Text=\"A\"><Value Text=\"no language\"/></Display></Node>"
        "<Node Value=\"no id\"/>"
        "<Node Id=\"b\" Value=\"b\"><Display Text=\"B\"/></Node>"
        "</Node></Node></Root>";
    TestGroup loaded("Unit");
    auto* target = static_cast<EnumLimiter*>(loaded.addPropertyInner(std::make_unique<EnumLimiter>()));
    loadFromString(loaded, text, mode);
    EXPECT_EQ(valuesOf(*target), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(problems.size(), 2u);
    EXPECT_EQ(target->findByValue("a")->getDisplay().getValue("en"), "");
    EXPECT_EQ(target->findByValue("b")->getDisplay().getValue("en"), "B");
}
