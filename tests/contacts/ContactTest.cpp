#include "contacts/Contact.h"

#include "ContactTestSupport.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using ContactTestSupport::readInto;
using ContactTestSupport::StructureCounter;
using ContactTestSupport::textOf;
using ZemTree::Contact;

TEST(ContactTest, TextNamesThePathOrElseTheNumber)
{
    Contact withBoth(5, false);
    withBoth.setPath("Binary/Input 2");
    const struct {
        Contact contact;
        const char* text;
    } rows[] = {
        {Contact(3, true), "3"},
        {Contact(3, false), "!3"},
        {Contact(0, true), "0"},
        {Contact(-2, true), "-2"},
        {Contact("Binary/Input 2", false), "!Binary/Input 2"},
        {Contact("BinaryInputs/Group 1/Input 3", true), "BinaryInputs/Group 1/Input 3"},
        {withBoth, "!Binary/Input 2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.text, textOf(row.contact));
    }
}

TEST(ContactTest, ReadingReplacesEveryFieldAndNeverReportsAFailure)
{
    const struct {
        const char* text;
        int number;
        bool isNormalOpen;
        const char* path;
    } rows[] = {
        {"", 1, true, ""},
        {"!", 1, true, ""},
        {"3", 3, true, ""},
        {"!3", 3, false, ""},
        {"007", 7, true, ""},
        {"!Binary/Input 2", 1, false, "Binary/Input 2"},
        {"!!x", 1, false, "!x"},
        {"-3", 1, true, "-3"},
        {" 3", 1, true, " 3"},
        // Begins with a digit but is no whole number: the default contact, the "!" lost as well.
        {"2 Input", 1, true, ""},
        {"!2 Input", 1, true, ""},
        {"12a", 1, true, ""},
        {"3 ", 1, true, ""},
        {"99999999999", 1, true, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string("'") + row.text + "'");
        Contact contact("Old/Path", false);
        contact.setNumber(9);
        const auto state = readInto(contact, row.text);
        EXPECT_FALSE(state.bad);
        EXPECT_FALSE(state.fail);
        EXPECT_EQ(row.number, contact.getNumber());
        EXPECT_EQ(row.isNormalOpen, contact.getIsNormalOpen());
        EXPECT_EQ(row.path, contact.getPath());
    }
}

TEST(ContactTest, SettersEmitOnlyOnARealChange)
{
    Contact contact(2, true);
    contact.setPath("P");
    StructureCounter counter(contact);

    contact.setNumber(2);
    contact.setPath("P");
    contact.setIsNormalOpen(true);
    EXPECT_EQ(0, counter.count);

    contact.setNumber(4);
    EXPECT_EQ(1, counter.count);
    EXPECT_EQ("P", contact.getPath()) << "a new number leaves the path";
    contact.setPath("");
    EXPECT_EQ(2, counter.count);
    contact.setIsNormalOpen(false);
    EXPECT_EQ(3, counter.count);
    EXPECT_EQ(1, contact.getType());
    EXPECT_EQ(3, contact.getIndex());
}

TEST(ContactTest, ReadingAndCopiesDoNotCarrySubscribers)
{
    Contact original(2, true);
    StructureCounter counter(original);
    Contact copy(original);
    copy.setNumber(3);
    Contact assigned(9, false);
    assigned = original;
    assigned.setNumber(4);
    EXPECT_EQ(0, counter.count);
    original.setNumber(5);
    EXPECT_EQ(1, counter.count);

    readInto(original, "!7");
    original.setNumber(8);
    EXPECT_EQ(1, counter.count) << "reading is silent and replaces the subscribers";
}

TEST(ContactTest, ConversionRoundTripKeepsOnlyWhatTheTextHolds)
{
    Contact withBoth(5, false);
    withBoth.setPath("Binary/Input 2");
    const std::string text = Zem::convertToString<Contact, true, true>(withBoth);
    std::shared_ptr<Contact> back;
    ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<Contact>, true, true>(text, back)));
    EXPECT_EQ(1, back->getNumber());
    EXPECT_FALSE(back->getIsNormalOpen());
    EXPECT_EQ("Binary/Input 2", back->getPath());

    // A path that begins with a digit does not come back as a path.
    std::shared_ptr<Contact> digitPath;
    ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<Contact>, true, true>(textOf(Contact("2 Input", true)), digitPath)));
    EXPECT_EQ("", digitPath->getPath());
    EXPECT_EQ(1, digitPath->getNumber());

    std::shared_ptr<Contact> empty;
    ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<Contact>, true, true>("", empty)));
    EXPECT_EQ(1, empty->getNumber());
    EXPECT_TRUE(empty->getIsNormalOpen());
}

TEST(ContactTest, NumberIsWrittenWithoutGroupingUnderACommaLocale)
{
    const ContactTestSupport::CommaLocaleGuard guard;
    EXPECT_EQ("!12345", textOf(Contact(12345, false)));
    Contact contact(1, true);
    readInto(contact, "12345");
    EXPECT_EQ(12345, contact.getNumber());
}

} // namespace
