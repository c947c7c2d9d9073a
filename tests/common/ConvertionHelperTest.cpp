#include "core/common/ConvertionHelper.h"

#include "core/tree/Measures.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const double quietNan = std::numeric_limits<double>::quiet_NaN();
const double inf = std::numeric_limits<double>::infinity();

// A class with a stream form that takes any text, the empty one included.
class Tolerant {
public:
    Tolerant() = default;
    explicit Tolerant(std::string initial) : text(std::move(initial)) {}

    void operator>>(std::ostringstream& stream) const { stream << "[" << text << "]"; }
    void operator<<(std::istringstream& stream) { text = stream.str(); }

    std::string text = "fresh";
};

// A class with a stream form that refuses the empty text and any text that is not a number.
class Picky {
public:
    void operator>>(std::ostringstream& stream) const { stream << number; }
    void operator<<(std::istringstream& stream)
    {
        if (stream.str().empty()) {
            stream.setstate(std::ios::badbit);
            return;
        }
        stream >> number;
    }

    int number = -1;
};

struct NoTextForm {
    int anything = 0;
};

enum class Colour { Red = 2, Blue = -5 };

} // namespace

TEST(ConvertionHelperTest, RealTextsKeepFifteenDigitsLessThePrecision)
{
    struct Row {
        double value;
        int precision;
        const char* text;
    };
    const Row rows[] = {
        {0.0, 2, "0"},
        {-0.0, 0, "0"},
        {1e-14, 2, "0"},
        {1e-14, 0, "1e-14"},
        {0.1 + 0.2, 2, "0.3"},
        {1234.5, 2, "1234.5"},
        {1.0 / 3.0, 2, "0.3333333333333"},
        {1.0 / 3.0, 0, "0.333333333333333"},
        {1.2345678901234567, 2, "1.2345678901235"},
        {123456789012345678.0, 0, "1.23456789012346e+17"},
        {1e20, 2, "1e+20"},
        // A negative value falls back to the stream's six significant digits.
        {-1.23456789, 2, "-1.23457"},
        {-1234567.0, 0, "-1.23457e+06"},
        // The precision may give up every digit: then the floor swallows the value.
        {2.5, 16, "0"},
        {quietNan, 2, "nan"},
        {inf, 2, "inf"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " with precision " + std::to_string(row.precision));
        EXPECT_EQ((Zem::convertToString<double, true>(row.value, row.precision)), row.text);
    }
}

TEST(ConvertionHelperTest, ReadingIsStrict)
{
    struct Row {
        const char* text;
        bool isLong;
        long longValue;
        bool isDouble;
        double doubleValue;
    };
    const Row rows[] = {
        {"12", true, 12, true, 12.0},
        {" 12", true, 12, true, 12.0},
        {"-40", true, -40, true, -40.0},
        {"12 ", false, 0, false, 0.0},
        {"", false, 0, false, 0.0},
        {"1e3", false, 0, true, 1000.0},
        {"2.5", false, 0, true, 2.5},
        {"2,5", false, 0, false, 0.0},
        {"1e", false, 0, false, 0.0},
        {"1e400", false, 0, false, 0.0},
        {"99999999999999999999", false, 0, true, 1e20},
        {"nan", false, 0, true, quietNan},
        {" nan", false, 0, false, 0.0},
        {"infinity", false, 0, true, inf},
        {"-inf", false, 0, true, -inf},
        {"infinityx", false, 0, false, 0.0},
        {"--inf", false, 0, false, 0.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string("'") + row.text + "'");
        long longValue = 77;
        EXPECT_EQ((Zem::tryConvert<long, true>(row.text, longValue)), row.isLong);
        EXPECT_EQ(longValue, row.isLong ? row.longValue : 77);

        double doubleValue = 77.0;
        EXPECT_EQ((Zem::tryConvert<double, true>(row.text, doubleValue)), row.isDouble);
        if (!row.isDouble)
            EXPECT_EQ(doubleValue, 77.0);
        else if (std::isnan(row.doubleValue))
            EXPECT_TRUE(std::isnan(doubleValue));
        else
            EXPECT_EQ(doubleValue, row.doubleValue);
    }
}

TEST(ConvertionHelperTest, IntegersOutOfTheirRangeDoNotRead)
{
    int small = 3;
    EXPECT_FALSE((Zem::tryConvert<int, true>("2147483648", small)));
    unsigned positive = 3;
    // The stream alone would wrap this round to the largest value.
    EXPECT_FALSE((Zem::tryConvert<unsigned, true>("-1", positive)));
    EXPECT_FALSE((Zem::tryConvert<unsigned, true>(" -1", positive)));
    signed char byte = 3;
    EXPECT_FALSE((Zem::tryConvert<signed char, true>("200", byte)));
    EXPECT_TRUE((Zem::tryConvert<signed char, true>("-100", byte)));
    EXPECT_EQ(byte, -100);
    EXPECT_EQ(small, 3);
    EXPECT_EQ(positive, 3u);
}

TEST(ConvertionHelperTest, SharedPointerReadingBuildsANewObject)
{
    const auto before = std::make_shared<Tolerant>("old");
    std::shared_ptr<Tolerant> tolerant = before;
    ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<Tolerant>, true, true>("", tolerant)));
    ASSERT_NE(tolerant, before);
    EXPECT_EQ(tolerant->text, "");
    EXPECT_EQ(before->text, "old");

    // An empty text is refused only when the class's reader says so by the badbit.
    const auto kept = std::make_shared<Picky>();
    std::shared_ptr<Picky> picky = kept;
    EXPECT_FALSE((Zem::tryConvert<std::shared_ptr<Picky>, true, true>("", picky)));
    EXPECT_EQ(picky, kept);
    EXPECT_FALSE((Zem::tryConvert<std::shared_ptr<Picky>, true, true>("seven", picky)));
    EXPECT_EQ(picky, kept);
    ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<Picky>, true, true>("7", picky)));
    EXPECT_EQ(picky->number, 7);

}

TEST(ConvertionHelperTest, TypeWithoutTextFormThrowsOrFails)
{
    const NoTextForm object;
    try {
        Zem::toText(object);
        FAIL() << "no exception";
    }
    catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "[ZemCommon/ConvertionHelper] Not supported convertToString type");
    }
    EXPECT_THROW((Zem::convertToString<NoTextForm, true, true>(object)), std::logic_error);
    EXPECT_THROW(Zem::convertToString(object), std::logic_error);

    NoTextForm target;
    EXPECT_FALSE(Zem::fromText("1", target));
    EXPECT_FALSE((Zem::tryConvert<NoTextForm, true, true>("1", target)));
}

TEST(ConvertionHelperTest, GenericFormsChooseByType)
{
    EXPECT_EQ(Zem::toText(std::string("a b")), "a b");
    EXPECT_EQ(Zem::toText(false), "false");
    EXPECT_EQ(Zem::toText(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(Zem::toText(Colour::Blue), "-5");
    EXPECT_EQ(Zem::toText(ZemTree::Measures::Ohm()), "Ohm");
    EXPECT_EQ(Zem::toText(static_cast<ZemTree::Measure*>(nullptr)), "");
    EXPECT_EQ(Zem::toText(std::make_shared<Tolerant>("p")), "[p]");
    EXPECT_EQ((Zem::convertToString<std::shared_ptr<Tolerant>, true, true>(nullptr)), "");
    // A byte is a number, not a character.
    EXPECT_EQ((Zem::convertToString<signed char, true>(static_cast<signed char>(-7))), "-7");

    bool flag = false;
    EXPECT_TRUE(Zem::fromText("true", flag));
    EXPECT_TRUE(flag);
    EXPECT_FALSE(Zem::fromText("yes", flag));
    EXPECT_TRUE(flag);
    Colour colour = Colour::Blue;
    EXPECT_TRUE(Zem::fromText("2", colour));
    EXPECT_EQ(colour, Colour::Red);
    ZemTree::Measure* measure = nullptr;
    EXPECT_TRUE(Zem::fromText("Second", measure));
    EXPECT_EQ(measure, ZemTree::Measures::Second());
    EXPECT_FALSE(Zem::fromText("Parsec", measure));
    EXPECT_EQ(measure, ZemTree::Measures::Second());
    EXPECT_TRUE(Zem::fromText("", measure));
    EXPECT_EQ(measure, nullptr);
    Tolerant object;
    EXPECT_TRUE(Zem::fromText("in", object));
    EXPECT_EQ(object.text, "in");
}

TEST(ConvertionHelperTest, RealTextsReadBackToTheSameText)
{
    const double values[] = {0.1, 1.0 / 3.0, 6.02214076e23, 1.5e-10, 123456.789, 2.0 / 3.0 * 1e-5, 4503599627370497.0};
    for (const double value : values) {
        const std::string text = Zem::convertToString<double, true>(value, 0);
        SCOPED_TRACE(text);
        double read = 0.0;
        ASSERT_TRUE((Zem::tryConvert<double, true>(text, read)));
        EXPECT_NEAR(read, value, std::fabs(value) * 1e-14);
        EXPECT_EQ((Zem::convertToString<double, true>(read, 0)), text);
    }
}

namespace {

// Sets a global locale for the life of the object and restores the previous one after.
struct GlobalLocaleGuard {
    explicit GlobalLocaleGuard(const std::locale& locale) : previous(std::locale::global(locale)) {}
    ~GlobalLocaleGuard() { std::locale::global(previous); }
    std::locale previous;
};

struct CommaPunctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

} // namespace

TEST(ConvertionHelperTest, TextsDoNotDependOnTheGlobalLocale)
{
    const GlobalLocaleGuard guard(std::locale(std::locale::classic(), new CommaPunctuation));
    // The test is only worth something if the global locale really writes a comma.
    std::ostringstream probe;
    probe << 1234.5;
    ASSERT_EQ(probe.str(), "1.234,5");

    EXPECT_EQ((Zem::convertToString<double, true>(1234567.25, 2)), "1234567.25");
    EXPECT_EQ((Zem::convertToString<double, true>(-1.5, 2)), "-1.5");
    EXPECT_EQ((Zem::convertToString<long, true>(1234567L)), "1234567");
    EXPECT_EQ(Zem::toText(0.5), "0.5");

    double real = 0.0;
    EXPECT_TRUE((Zem::tryConvert<double, true>("1234.5", real)));
    EXPECT_EQ(real, 1234.5);
    EXPECT_FALSE((Zem::tryConvert<double, true>("1234,5", real)));
    EXPECT_FALSE((Zem::tryConvert<double, true>("1.234,5", real)));
    long integer = 0;
    EXPECT_TRUE((Zem::tryConvert<long, true>("1234567", integer)));
    EXPECT_EQ(integer, 1234567L);
    EXPECT_FALSE((Zem::tryConvert<long, true>("1.234.567", integer)));
    EXPECT_EQ(Zem::splitConvert<std::string>("1,5;2,5", ';'), (std::vector<std::string>{"1,5", "2,5"}));
    // Every piece is kept, the empty ones included.
    EXPECT_EQ(Zem::splitConvert<std::string>(";a;;", ';'), (std::vector<std::string>{"", "a", "", ""}));
    EXPECT_EQ(Zem::splitConvert<std::string>("", ';'), std::vector<std::string>{""});
}
