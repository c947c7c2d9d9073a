#include "core/tree/LocalString.h"

#include "core/tree/TreeLocalization.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using ZemTree::LocalString;

// Restores the global language whatever a test sets it to.
struct LanguageGuard {
    explicit LanguageGuard(int language) : saved(lng::language) { lng::language = language; }
    ~LanguageGuard() { lng::language = saved; }
    int saved;
};

TEST(LocalStringTest, LanguagesAndFallbacks)
{
    LocalString perLanguage("plain");
    perLanguage.setValue("Deutsch", "de");

    struct Row {
        const char* text;
        LocalString value;
        int language;
        std::string asked;
        std::string expected;
    };
    const Row rows[] = {
        {"two languages, current ru", LocalString::create("Voltage", "Напряжение"), 1, "", "Напряжение"},
        {"two languages, asked ru under en", LocalString::create("Voltage", "Напряжение"), 0, "ru", "Напряжение"},
        {"two languages, unknown language", LocalString::create("Voltage", "Напряжение"), 1, "fr", "Voltage"},
        {"empty russian, current ru", LocalString::create("Voltage", ""), 1, "", "Voltage"},
        {"plain text, current ru", LocalString("Time"), 1, "", "Time"},
        {"own entry wins over plain", perLanguage, 0, "de", "Deutsch"},
        {"no entry falls to plain", perLanguage, 1, "", "plain"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const LanguageGuard guard(row.language);
        EXPECT_EQ(row.expected, row.value.getValue(row.asked));
    }
}

TEST(LocalStringTest, EmptyLanguageSetsTheCurrentOne)
{
    LocalString value = LocalString::create("Time", "Время");
    {
        const LanguageGuard guard(1);
        value.setValue("Выдержка", "");
        EXPECT_EQ("Выдержка", value.getValue());
    }
    const LanguageGuard guard(0);
    EXPECT_EQ("Time", value.getValue());
    value.setValue("Delay", "");
    EXPECT_EQ("Delay", value.getValue("en"));
    EXPECT_EQ("Выдержка", value.getValue("ru"));
    EXPECT_EQ("Time", value.getValue("fr"));
}

TEST(LocalStringTest, EmptyAndEquality)
{
    EXPECT_TRUE(LocalString().empty());
    EXPECT_TRUE(LocalString(static_cast<const char*>(nullptr)).empty());

    LocalString onlyRussian;
    onlyRussian.setValue("б", "ru");
    EXPECT_FALSE(onlyRussian.empty());

    EXPECT_EQ(LocalString("a"), LocalString::create("a", ""));
    EXPECT_NE(LocalString("a"), LocalString::create("a", "б"));
    EXPECT_NE(LocalString("a"), onlyRussian);
    EXPECT_EQ(LocalString(), LocalString::Empty());
}

} // namespace
