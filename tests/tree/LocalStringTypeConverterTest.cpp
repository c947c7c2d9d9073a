#include "core/tree/LocalStringTypeConverter.h"

#include "core/common/XmlInclude.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace {

using ZemTree::LocalString;
using ZemTree::LocalStringTypeConverter;

// Saves `value` into a document, writes the document to text, parses it again and reads the value back,
// so that the test covers escaping and UTF-8 through a real file form.
LocalString roundTrip(const LocalString& value, std::string& firstXml, std::string& secondXml)
{
    xmlpp::Document document;
    xmlpp::Element* root = document.create_root_node("Root");
    LocalStringTypeConverter::toXmlData(value, root, "Description");
    firstXml = document.write_to_string();

    xmlpp::DomParser parser;
    parser.parse_memory(firstXml);
    const LocalString read =
        LocalStringTypeConverter::fromXmlChild(parser.get_document()->get_root_node(), "Description", false);

    xmlpp::Document again;
    LocalStringTypeConverter::toXmlData(read, again.create_root_node("Root"), "Description");
    secondXml = again.write_to_string();
    return read;
}

TEST(LocalStringTypeConverterTest, RoundTripKeepsEveryLanguage)
{
    LocalString many = LocalString::create("Trip \"time\" <t> & more", "Время «срабатывания»");
    many.setValue("Auslösezeit", "de");
    many.setValue("line one\nline two\ttab", "zz");
    LocalString onlyRussian;
    onlyRussian.setValue("Только русский", "ru");

    struct Row {
        const char* text;
        LocalString value;
    };
    const Row rows[] = {
        {"empty", LocalString()},
        {"plain cyrillic", LocalString("Уставки")},
        {"special characters and more languages", many},
        {"russian without plain text", onlyRussian},
        {"spaces kept", LocalString("  padded  ")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        std::string firstXml;
        std::string secondXml;
        const LocalString read = roundTrip(row.value, firstXml, secondXml);
        EXPECT_EQ(row.value, read);
        EXPECT_EQ(row.value.getValue("ru"), read.getValue("ru"));
        EXPECT_EQ(firstXml, secondXml);
    }
}

TEST(LocalStringTypeConverterTest, MalformedElementsThrowOrGiveEmpty)
{
    struct Row {
        const char* text;
        const char* xml;
    };
    const Row rows[] = {
        {"value without language", R"(<Root><Description Text="x"><Value Text="y"/></Description></Root>)"},
        {"repeated language",
         R"(<Root><Description Text="x"><Value Language="ru" Text="a"/><Value Language="ru" Text="b"/></Description></Root>)"},
        {"missing element", R"(<Root><Other Text="x"/></Root>)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        xmlpp::DomParser parser;
        parser.parse_memory(row.xml);
        const xmlpp::Element* root = parser.get_document()->get_root_node();
        EXPECT_THROW(LocalStringTypeConverter::fromXmlChild(root, "Description", false), std::runtime_error);
        EXPECT_TRUE(LocalStringTypeConverter::fromXmlChild(root, "Description", true).empty());
    }
    EXPECT_THROW(LocalStringTypeConverter::fromXmlData(nullptr, false), std::runtime_error);
    EXPECT_TRUE(LocalStringTypeConverter::fromXmlData(nullptr, true).empty());
}

TEST(LocalStringTypeConverterTest, ToleratesMissingTextAndUnknownChildren)
{
    xmlpp::DomParser parser;
    parser.parse_memory(
        R"(<Root><Description>noise<Unknown/><Value Language="ru"/><Value Language="en" Text="E"/></Description></Root>)");
    const LocalString read =
        LocalStringTypeConverter::fromXmlChild(parser.get_document()->get_root_node(), "Description", false);
    EXPECT_EQ("", read.getPlainText());
    EXPECT_EQ("E", read.getValue("en"));
    EXPECT_EQ(1u, read.getValues().count("ru"));
    EXPECT_EQ("", read.getValue("ru"));
}

} // namespace
