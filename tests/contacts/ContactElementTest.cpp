#include "contacts/ContactElement.h"

#include "ContactTestSupport.h"
#include "contacts/ContactMode.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using ContactTestSupport::readInto;
using ContactTestSupport::StructureCounter;
using ContactTestSupport::textOf;
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

} // namespace
