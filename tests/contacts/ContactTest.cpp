#include "contacts/Contact.h"

#include "ContactTestSupport.h"
#include "contacts/ContactCollection.h"
#include "contacts/ContactElement.h"
#include "contacts/ContactMode.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/TreeLocalization.h"

#include <sigc++/connection.h>

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

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

using ZemTree::ContactElement;
using ZemTree::ContactMode;

const double nan = std::numeric_limits<double>::quiet_NaN();
const double inf = std::numeric_limits<double>::infinity();

// Doubles equal, NaN equal to NaN.
void expectSameTime(double expected, double actual)
{
    if (std::isnan(expected))
        EXPECT_TRUE(std::isnan(actual)) << actual;
    else
        EXPECT_EQ(expected, actual);
}

TEST(ContactElementTest, TextJoinsContactModeAndTimes)
{
    const struct {
        ContactElement element;
        const char* text;
    } rows[] = {
        {ContactElement(3, false, ContactMode::SC, 0.1, 0.25), "!3;SC;0.1;0.25"},
        {ContactElement(1, true, ContactMode::OFF, 0.0, 0.0), "1;OFF;0;0"},
        {ContactElement("Binary/Input 2", true, ContactMode::RPV, 0.1 + 0.2, 1234.5), "Binary/Input 2;PRV;0.3;1234.5"},
        {ContactElement(2, true, ContactMode::Pause, 1e-14, nan), "2;Pause;0;nan"},
        {ContactElement(2, true, ContactMode::NoLoad, inf, -inf), "2;NoLoad;inf;-inf"},
        {ContactElement(2, true, "", 1.0 / 3.0, 2.0), "2;;0.3333333333333;2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.text, textOf(row.element));
    }
}

TEST(ContactElementTest, ReadingTable)
{
    // "old" marks a text after which the element must be exactly as it was.
    const struct {
        const char* text;
        bool bad;
        bool old;
        int number;
        bool isNormalOpen;
        const char* path;
        const char* mode;
        double start;
        double finish;
    } rows[] = {
        {"!3;SC;0.1;0.25", false, false, 3, false, "", "SC", 0.1, 0.25},
        {"Binary/Input 2;RPO;nan;inf", false, false, 1, true, "Binary/Input 2", "RPO", nan, inf},
        {"4;PRV;-inf;1e3", false, false, 4, true, "", "PRV", -inf, 1000.0},
        {"!!x;OFF;0;0", false, false, 1, false, "!x", "OFF", 0.0, 0.0},
        {"3;;0;0", false, false, 3, true, "", "", 0.0, 0.0},
        {"3;anything at all;1;2", false, false, 3, true, "", "anything at all", 1.0, 2.0},
        // The one malformed shape that passes silently.
        {"2 Input;SC;1;2", false, true, 0, false, "", "", 0.0, 0.0},
        {"!2 Input;SC;1;2", false, true, 0, false, "", "", 0.0, 0.0},
        {"12a;SC;1;2", false, true, 0, false, "", "", 0.0, 0.0},
        {"", true, true, 0, false, "", "", 0.0, 0.0},
        {"1;OFF;0", true, true, 0, false, "", "", 0.0, 0.0},
        {"1;OFF;0;0;0", true, true, 0, false, "", "", 0.0, 0.0},
        {"1;OFF;x;0", true, true, 0, false, "", "", 0.0, 0.0},
        {"1;OFF;0;", true, true, 0, false, "", "", 0.0, 0.0},
        {"1;OFF;0;0 ", true, true, 0, false, "", "", 0.0, 0.0},
        {"1;OFF;0,5;0", true, true, 0, false, "", "", 0.0, 0.0},
        {"1|2;OFF;0;0|", true, true, 0, false, "", "", 0.0, 0.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string("'") + row.text + "'");
        ContactElement element("Old", false, ContactMode::Pause, 5.0, 6.0);
        element.setNumber(9);
        const auto state = readInto(element, row.text);
        EXPECT_EQ(row.bad, state.bad);
        if (row.old) {
            EXPECT_EQ("!Old;Pause;5;6", textOf(element));
            EXPECT_EQ(9, element.getNumber());
            continue;
        }
        EXPECT_EQ(row.number, element.getNumber());
        EXPECT_EQ(row.isNormalOpen, element.getIsNormalOpen());
        EXPECT_EQ(row.path, element.getPath());
        EXPECT_EQ(row.mode, element.getMode());
        expectSameTime(row.start, element.getStart());
        expectSameTime(row.finish, element.getFinish());
    }
}

TEST(ContactElementTest, AnEmptyContactNameThrowsOutOfRangeAndChangesNothing)
{
    for (const char* text : {"!;SC;0;0", ";SC;0;0", ";;0;0"}) {
        SCOPED_TRACE(text);
        ContactElement element(4, true, ContactMode::SC, 1.0, 2.0);
        EXPECT_THROW(readInto(element, text), std::out_of_range);
        EXPECT_EQ("4;SC;1;2", textOf(element));
    }
}

TEST(ContactElementTest, SettersEmitOnlyOnAChangeAndNaNAlwaysEmits)
{
    ContactElement element(1, true, ContactMode::OFF, 0.0, 1.0);
    StructureCounter counter(element);
    const struct {
        const char* what;
        void (*apply)(ContactElement&);
        int emits;
    } rows[] = {
        {"same mode", [](ContactElement& e) { e.setMode(ContactMode::OFF); }, 0},
        {"same start", [](ContactElement& e) { e.setStart(0.0); }, 0},
        {"negative zero equals zero", [](ContactElement& e) { e.setStart(-0.0); }, 0},
        {"same finish", [](ContactElement& e) { e.setFinish(1.0); }, 0},
        {"new mode", [](ContactElement& e) { e.setMode(ContactMode::RPV); }, 1},
        {"new start", [](ContactElement& e) { e.setStart(0.5); }, 1},
        {"new finish", [](ContactElement& e) { e.setFinish(2.5); }, 1},
        {"NaN start", [](ContactElement& e) { e.setStart(nan); }, 1},
        {"NaN start again", [](ContactElement& e) { e.setStart(nan); }, 1},
        {"NaN finish twice",
         [](ContactElement& e) {
             e.setFinish(nan);
             e.setFinish(nan);
         },
         2},
        {"contact fields", [](ContactElement& e) { e.setNumber(2); }, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const int before = counter.count;
        row.apply(element);
        EXPECT_EQ(row.emits, counter.count - before);
    }
    const int before = counter.count;
    readInto(element, "5;SC;1;2");
    element.setMode(ContactMode::Pause);
    EXPECT_EQ(before, counter.count) << "reading is silent and replaces the subscribers";
}

TEST(ContactElementTest, RoundTripKeepsPRVAndTheTextPrecision)
{
    const ContactElement element(6, false, ContactMode::RPV, 0.123456789012345678, 12.5);
    const std::string text = Zem::convertToString<ContactElement, true, true>(element);
    EXPECT_EQ("!6;PRV;0.1234567890123;12.5", text);
    std::shared_ptr<ContactElement> back;
    ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<ContactElement>, true, true>(text, back)));
    EXPECT_EQ("PRV", back->getMode());
    EXPECT_EQ(0.1234567890123, back->getStart());
    EXPECT_EQ(text, textOf(*back));

    std::shared_ptr<ContactElement> none;
    EXPECT_FALSE((Zem::tryConvert<std::shared_ptr<ContactElement>, true, true>("", none)));
    EXPECT_EQ(nullptr, none);
}

TEST(ContactElementTest, TimesIgnoreACommaLocale)
{
    const ContactTestSupport::CommaLocaleGuard guard;
    const ContactElement element(1234, true, ContactMode::SC, 1234.5, 0.25);
    EXPECT_EQ("1234;SC;1234.5;0.25", textOf(element));
    ContactElement read(1, true, ContactMode::OFF, 0.0, 0.0);
    EXPECT_FALSE(readInto(read, "1234;SC;1234.5;0.25").bad);
    EXPECT_EQ(1234.5, read.getStart());
    EXPECT_EQ(0.25, read.getFinish());
}

class ContactModeTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = 0; }
};

const struct {
    const std::string& mode;
    const char* text;
    const char* key;
} modes[] = {
    {ContactMode::OFF, "OFF", "InContactMode.Off"}, {ContactMode::NoLoad, "NoLoad", "InContactMode.NoLoad"},
    {ContactMode::SC, "SC", "InContactMode.SC"},    {ContactMode::Pause, "Pause", "InContactMode.Pause"},
    {ContactMode::RPO, "RPO", "InContactMode.RPO"}, {ContactMode::RPV, "PRV", "InContactMode.RPV"},
};

TEST_F(ContactModeTest, DefaultLimiterHoldsEveryModeInOrderWithItsDisplayText)
{
    for (int language : {0, 1}) {
        SCOPED_TRACE(language);
        lng::language = language;
        // Emptied, the shared limiter is filled again in the language of the moment.
        ContactMode::getDefaultHardwareOutLimiter()->clearItems();
        const auto limiter = ContactMode::getDefaultHardwareOutLimiter();
        ASSERT_NE(nullptr, limiter);
        const auto items = limiter->getItems();
        ASSERT_EQ(std::size(modes), items.size());
        for (std::size_t index = 0; index < items.size(); ++index) {
            SCOPED_TRACE(modes[index].text);
            EXPECT_EQ(modes[index].text, modes[index].mode);
            EXPECT_EQ(modes[index].text, items[index]->getValue());
            EXPECT_EQ(std::string(lng::Tree::get(modes[index].key)), items[index]->getDisplay().getValue());
            EXPECT_NE(modes[index].key, items[index]->getDisplay().getValue()) << "key missing from the texts";
        }
    }
    // Asked again, the shared limiter is the same object and is not filled again.
    const auto first = ContactMode::getDefaultHardwareOutLimiter();
    int changes = 0;
    sigc::connection connection = first->getSignalChanged().connect([&changes] { ++changes; });
    EXPECT_EQ(first, ContactMode::getDefaultHardwareOutLimiter());
    EXPECT_EQ(std::size(modes), first->count());
    EXPECT_EQ(0, changes);
    connection.disconnect();
}

using ::testing::StrEq;
using ::testing::ThrowsMessage;
using ZemTree::ContactCollection;

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
    collection.getSignalCollectionChanged().connect(
        [&seen](Zem::NotifyCollectionChangedSignalArgs<ContactElement*>& args) {
            seen.push_back(std::to_string(static_cast<int>(args.action)) + "@" + std::to_string(args.index) + ":"
                           + std::to_string(args.item->getNumber()));
        });
    readInto(collection, "5;OFF;0;0|6;OFF;0;0");
    EXPECT_EQ((std::vector<std::string>{"1@0:1", "0@0:5", "0@1:6"}), seen);
}

TEST_F(ContactCollectionTest, CloneCopiesTheTextOnly)
{
    ContactCollection original;
    original.add(
        std::make_unique<ContactElement>("Binary/Input 2", false, ContactMode::RPV, 0.123456789012345678, 1.0));
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
