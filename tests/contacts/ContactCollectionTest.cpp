#include "contacts/ContactCollection.h"

#include "ContactTestSupport.h"
#include "contacts/ContactMode.h"
#include "core/tree/TreeLocalization.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using ContactTestSupport::readInto;
using ContactTestSupport::StructureCounter;
using ContactTestSupport::textOf;
using ::testing::StrEq;
using ::testing::ThrowsMessage;
using ZemTree::ContactCollection;
using ZemTree::ContactElement;
using ZemTree::ContactMode;

// A collection that the test can lock, as a unit locks the collection it owns.
class LockableContactCollection : public ContactCollection {
public:
    void lock() { _lockCollection(); }
};

std::unique_ptr<ContactElement> element(int number, const std::string& mode = ContactMode::OFF)
{
    return std::make_unique<ContactElement>(number, true, mode, 0.0, 0.0);
}

std::vector<std::string> elementTexts(const ContactCollection& collection)
{
    std::vector<std::string> texts;
    for (const ContactElement* item : collection)
        texts.push_back(textOf(*item));
    return texts;
}

class ContactCollectionTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = 0; }
};

TEST_F(ContactCollectionTest, TextJoinsTheElementsWithBars)
{
    ContactCollection collection;
    EXPECT_EQ("", textOf(collection));
    collection.add(element(1));
    EXPECT_EQ("1;OFF;0;0", textOf(collection));
    collection.add(std::make_unique<ContactElement>(2, false, ContactMode::SC, 0.1, 0.25));
    EXPECT_EQ("1;OFF;0;0|!2;SC;0.1;0.25", textOf(collection));
}

TEST_F(ContactCollectionTest, ReadingTable)
{
    const struct {
        const char* text;
        bool bad;
        std::vector<std::string> elements;
    } rows[] = {
        {"", false, {}},
        {"1;OFF;0;0|!2;SC;0.1;0.25", false, {"1;OFF;0;0", "!2;SC;0.1;0.25"}},
        {"Binary/Input 2;PRV;0;1", false, {"Binary/Input 2;PRV;0;1"}},
        // A name that is no number and no path leaves the fresh element as it was made.
        {"2 Input;SC;1;2|3;SC;0;0", false, {"1;OFF;0;0", "3;SC;0;0"}},
        {"1;OFF;0;0|", true, {"1;OFF;0;0"}},
        {"|1;OFF;0;0", true, {}},
        {"1;OFF;0;0||2;OFF;0;0", true, {"1;OFF;0;0"}},
        {"1;OFF;0;0|x|2;OFF;0;0", true, {"1;OFF;0;0"}},
        {"1;OFF;0;0|2;OFF;zero;0", true, {"1;OFF;0;0"}},
        {"|", true, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string("'") + row.text + "'");
        ContactCollection collection;
        collection.add(element(7, ContactMode::Pause));
        const auto state = readInto(collection, row.text);
        EXPECT_EQ(row.bad, state.bad);
        EXPECT_EQ(row.elements, elementTexts(collection));
    }
}

TEST_F(ContactCollectionTest, AnEmptyContactNameInsideThrowsAndKeepsTheElementsBefore)
{
    ContactCollection collection;
    EXPECT_THROW(readInto(collection, "1;OFF;0;0|!;SC;0;0|2;OFF;0;0"), std::out_of_range);
    EXPECT_EQ(std::vector<std::string>{"1;OFF;0;0"}, elementTexts(collection));
}

TEST_F(ContactCollectionTest, ReadingALockedCollectionThrowsTheReadOnlyText)
{
    for (int language : {0, 1}) {
        lng::language = language;
        SCOPED_TRACE(language);
        LockableContactCollection filled;
        filled.add(element(1));
        filled.lock();
        StructureCounter counter(filled);
        EXPECT_THAT([&] { readInto(filled, "2;OFF;0;0"); },
                    ThrowsMessage<std::logic_error>(StrEq(lng::Tree::get("error.ReadOnly"))));
        EXPECT_EQ(std::vector<std::string>{"1;OFF;0;0"}, elementTexts(filled));
        EXPECT_EQ(0, counter.count);

        // Empty and locked: nothing to remove, so only the adding is refused.
        LockableContactCollection empty;
        empty.lock();
        EXPECT_NO_THROW(readInto(empty, ""));
        EXPECT_THROW(readInto(empty, "2;OFF;0;0"), std::logic_error);
        EXPECT_TRUE(empty.empty());
    }
}

TEST_F(ContactCollectionTest, StructureSignalForEveryChangeInsideAndOfTheList)
{
    ContactCollection collection;
    StructureCounter counter(collection);
    ContactElement* first = collection.add(element(1));
    ContactElement* second = collection.add(element(2));
    EXPECT_EQ(2, counter.count);

    first->setStart(1.5);
    second->setMode(ContactMode::SC);
    second->setMode(ContactMode::SC);
    EXPECT_EQ(4, counter.count);

    std::unique_ptr<ContactElement> released = collection.release(second);
    EXPECT_EQ(5, counter.count);
    released->setFinish(3.0);
    EXPECT_EQ(5, counter.count) << "a removed element is no longer heard";

    // One element removed, two added.
    readInto(collection, "3;OFF;0;0|4;OFF;0;0");
    EXPECT_EQ(8, counter.count);
    collection.at(1)->setNumber(5);
    EXPECT_EQ(9, counter.count);
}

TEST_F(ContactCollectionTest, ReadingGoesThroughTheCollectionProtocol)
{
    ContactCollection collection;
    collection.add(element(1));
    std::vector<std::string> seen;
    collection.getSignalCollectionChanged().connect([&seen](Zem::NotifyCollectionChangedSignalArgs<ContactElement*>& args) {
        seen.push_back(std::to_string(static_cast<int>(args.action)) + "@" + std::to_string(args.index) + ":"
                       + std::to_string(args.item->getNumber()));
    });
    readInto(collection, "5;OFF;0;0|6;OFF;0;0");
    EXPECT_EQ((std::vector<std::string>{"1@0:1", "0@0:5", "0@1:6"}), seen);
}

TEST_F(ContactCollectionTest, CloneCopiesTheTextOnly)
{
    ContactCollection original;
    original.add(std::make_unique<ContactElement>("Binary/Input 2", false, ContactMode::RPV, 0.123456789012345678,
                                                  1.0));
    original.add(element(3));
    StructureCounter counter(original);

    const std::shared_ptr<ContactCollection> copy = original.clone();
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(textOf(original), textOf(*copy));
    EXPECT_EQ(0.1234567890123, copy->at(0)->getStart());
    copy->at(1)->setNumber(4);
    copy->add(element(5));
    EXPECT_EQ(0, counter.count);
    EXPECT_EQ(2u, original.size());

    EXPECT_TRUE(ContactCollection().clone()->empty());
}

TEST_F(ContactCollectionTest, CloneOfATextThatDoesNotReadBackThrowsThePlainText)
{
    const struct {
        const char* what;
        std::unique_ptr<ContactElement> (*make)();
    } rows[] = {
        {"separator in the path",
         [] { return std::make_unique<ContactElement>("a;b", true, ContactMode::OFF, 0.0, 0.0); }},
        {"bar in the mode", [] { return std::make_unique<ContactElement>(1, true, "x|y", 0.0, 0.0); }},
        {"path that reads as an empty name",
         [] { return std::make_unique<ContactElement>("!", true, ContactMode::OFF, 0.0, 0.0); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        ContactCollection collection;
        collection.add(element(1));
        collection.add(row.make());
        try {
            collection.clone();
            ADD_FAILURE() << "no exception";
        }
        catch (const char* text) {
            EXPECT_STREQ("ContactCollection clone exception", text);
        }
    }
}

TEST_F(ContactCollectionTest, ConversionOfTheEmptyTextIsAnEmptyCollection)
{
    std::shared_ptr<ContactCollection> read;
    ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<ContactCollection>, true, true>("", read)));
    EXPECT_TRUE(read->empty());
    EXPECT_FALSE((Zem::tryConvert<std::shared_ptr<ContactCollection>, true, true>("1;OFF;0;0|", read)));
    EXPECT_TRUE(read->empty()) << "a failed conversion leaves the target";
}

} // namespace
