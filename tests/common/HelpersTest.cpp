#include "core/common/ConvertionHelper.h"
#include "core/common/DateTimeHelper.h"
#include "core/common/NumericHelper.h"
#include "core/common/PathHelper.h"
#include "core/common/StringHelper.h"
#include "core/common/ThreadHelper.h"
#include "core/common/TypeHelper.h"
#include "core/common/UniversalFactory.h"
#include "core/tree/Measures.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
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

namespace {

using Zem::DateTimeHelper;
using namespace std::chrono_literals;

// 2023-11-14 22:13:20.123 UTC.
constexpr std::int64_t sampleMs = 1700000000123;

// Pins the time zone for the test and restores the one the process had.
class DateTimeHelperTest : public ::testing::Test {
protected:
    void SetUp() override { setZone("UTC"); }
    void TearDown() override
    {
        if (_oldTz != nullptr)
            setZone(_oldTz->c_str());
        else
            unsetenv("TZ");
        tzset();
    }
    static void setZone(const char* zone)
    {
        setenv("TZ", zone, 1);
        tzset();
    }

private:
    const std::unique_ptr<const std::string> _oldTz =
        std::getenv("TZ") == nullptr ? nullptr : std::make_unique<const std::string>(std::getenv("TZ"));
};

TEST_F(DateTimeHelperTest, DisplayTimeUsesTheFormatInLocalTime)
{
    const auto time = DateTimeHelper::fromMilliseconds(sampleMs);
    EXPECT_EQ(DateTimeHelper::getDisplayTimeString(time, "%d.%m.%Y %H:%M:%S"), "14.11.2023 22:13:20");
    EXPECT_EQ(DateTimeHelper::getDisplayTimeString(time, ""), "");

    // Three hours east of UTC the same instant is already the next day.
    setZone("UTC-3");
    EXPECT_EQ(DateTimeHelper::getDisplayTimeString(time, "%d.%m.%Y %H:%M:%S"), "15.11.2023 01:13:20");
}

TEST_F(DateTimeHelperTest, DisplayTimeGrowsItsBufferForLongTexts)
{
    std::string format;
    std::string expected;
    for (int i = 0; i < 100; ++i) {
        format += "%Y-";
        expected += "2023-";
    }
    EXPECT_EQ(DateTimeHelper::getDisplayTimeString(DateTimeHelper::fromMilliseconds(sampleMs), format), expected);
}

TEST_F(DateTimeHelperTest, DisplayDuration)
{
    struct Row {
        const char* name;
        std::chrono::milliseconds duration;
        const char* format;
        const char* expected;
    };
    const Row rows[] = {
        {"under a second", 999ms, "%02d:%02d:%02d", "00:00:00"},
        {"h m s", 3725000ms, "%02d:%02d:%02d", "01:02:05"},
        {"more than a day", 90061000ms, "%02d:%02d:%02d", "25:01:01"},
        {"negative", -5000ms, "%02d:%02d:%02d", "00:00:00"},
        {"other format", 3725000ms, "%d h %d min %d s", "1 h 2 min 5 s"},
    };
    const auto start = DateTimeHelper::fromMilliseconds(sampleMs);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DateTimeHelper::getDisplayDurationString(start, start + row.duration, row.format), row.expected);
    }
}

TEST_F(DateTimeHelperTest, EpochCounts)
{
    const auto time = DateTimeHelper::fromMilliseconds(sampleMs);
    EXPECT_EQ(DateTimeHelper::toMilliseconds(time), sampleMs);
    EXPECT_EQ(DateTimeHelper::fromNanoseconds(DateTimeHelper::toNanoseconds(time)), time);
    // Parts below a millisecond are cut, not rounded.
    EXPECT_EQ(DateTimeHelper::toMilliseconds(DateTimeHelper::fromNanoseconds(1999999)), 1);
}

using Zem::NumericHelper;

struct StepRow {
    const char* name;
    double value, step, origin, expected;
};

// Exact comparison on purpose: the result must be the double nearest to the decimal multiple.
TEST(NumericHelperTest, StepRoundingTable)
{
    const std::vector<StepRow> rows = {
        {"below half", 0.124, 0.01, 0.0, 0.12},
        {"half step, binary just below", 0.125, 0.01, 0.0, 0.13},
        {"half step, 1.005", 1.005, 0.01, 0.0, 1.01},
        {"whole half rounds up, not to even", 2.5, 1.0, 0.0, 3.0},
        {"sum with binary noise", 0.1 + 0.2, 0.1, 0.0, 0.3},
        {"step 0.0001", 1.23456789, 0.0001, 0.0, 1.2346},
        {"angle near -180", -179.99995, 0.0001, 0.0, -180.0},
        {"step 5 negative half", -7.5, 5.0, 0.0, -10.0},
        {"origin 1, half step below", 0.5, 1.0, 1.0, 0.0},
        {"origin 0.1, step 0.5", 1.3, 0.5, 0.1, 1.1},
        {"origin 1000, half step", 1000.005, 0.01, 1000.0, 1000.01},
        {"large value half step", 1000000000.005, 0.01, 0.0, 1000000000.01},
    };
    for (const StepRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(NumericHelper::stepRounding(row.value, row.step, row.origin), row.expected);
    }
}

TEST(NumericHelperTest, FineStepsAndZero)
{
    const double value = 1.2345678901234567;
    EXPECT_NEAR(NumericHelper::stepRounding(value, 1e-15), value, 0.5e-15);
    // Zero comes back positive.
    EXPECT_FALSE(std::signbit(NumericHelper::stepRounding(-0.001, 0.01)));
}

TEST(NumericHelperTest, UnusableInputsReturnTheValue)
{
    EXPECT_TRUE(std::isnan(NumericHelper::stepRounding(quietNan, 0.01)));
    EXPECT_EQ(NumericHelper::stepRounding(inf, 0.01), inf);
    EXPECT_EQ(NumericHelper::stepRounding(1.234, 0.0), 1.234);
    EXPECT_EQ(NumericHelper::stepRounding(1.234, -0.01), 1.234);
    EXPECT_EQ(NumericHelper::stepRounding(1.234, inf), 1.234);
    // Too many steps from the origin for a double to hold a fraction: nothing to round, and no overflow.
    EXPECT_EQ(NumericHelper::stepRounding(1e20, 0.01), 1e20);
}

TEST(PathHelperTest, FileNameAndFileNameWithoutExtension)
{
    struct Row {
        std::string path, fileName, withoutExtension;
    };
    const std::vector<Row> rows = {
        {"a/b/c.xml", "c.xml", "c"},
        {"a/b/c.tar.xml", "c.tar.xml", "c.tar"},
        {"a/b/", "", ""},
        {".hidden", ".hidden", ".hidden"},
        {"dir/.hidden.xml", ".hidden.xml", ".hidden"},
        {"a.b/c", "c", "c"},
        {"name.", "name.", "name"},
        {"a/..", "..", ".."},
        {"шаблоны/Проверка.xml", "Проверка.xml", "Проверка"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE("\"" + row.path + "\"");
        EXPECT_EQ(Zem::getPathFileName(row.path), row.fileName);
        EXPECT_EQ(Zem::getPathFileNameWithoutExtension(row.path), row.withoutExtension);
    }
}

using Zem::StringHelper;

TEST(StringHelperTest, SplitKeepsEmptyParts)
{
    struct Row {
        std::string text;
        std::vector<std::string> parts;
    };
    const std::vector<Row> rows = {
        {"", {""}},
        {"a;b;", {"a", "b", ""}},
        {";a", {"", "a"}},
        {"a;;b", {"a", "", "b"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE("\"" + row.text + "\"");
        EXPECT_EQ(StringHelper::split(row.text, ';'), row.parts);
    }
}

TEST(StringHelperTest, ReplaceAll)
{
    struct Row {
        std::string text, pattern, replacement, expected;
    };
    const std::vector<Row> rows = {
        {"aaa", "aa", "b", "ba"},
        {"abc", "", "x", "abc"},
        {"abcb", "b", "", "ac"},
        {"a.b", ".", "..", "a..b"}, // The replacement is not scanned again.
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text + " / " + row.pattern);
        EXPECT_EQ(StringHelper::replaceAll(row.text, row.pattern, row.replacement), row.expected);
    }
}

TEST(StringHelperTest, IsInclude)
{
    const std::size_t npos = std::numeric_limits<std::size_t>::max();
    struct Row {
        const char* name;
        std::string text, pattern;
        std::size_t position, end;
        bool ignoreCase, expected;
    };
    const std::vector<Row> rows = {
        {"case differs, case-sensitive", "NaN", "nan", 0, 3, false, false},
        {"case differs, case ignored", "xNaN", "nan", 1, 4, true, true},
        {"pattern crosses end", "infinity", "inf", 0, 2, false, false},
        {"end past the text is clamped", "abc", "bc", 1, 100, false, true},
        {"huge position", "abc", "a", npos, npos, false, false},
        {"empty pattern at the end", "abc", "", 3, 3, false, true},
        {"empty pattern behind end", "abc", "", 3, 2, false, false},
        {"non-letters are not folded", "a[", "A{", 0, 2, true, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(StringHelper::isInclude(row.text, row.pattern, row.position, row.end, row.ignoreCase), row.expected);
    }
}

} // namespace

namespace ZemTypeHelperTest {
namespace Inner {

struct Sample {};
template <class A, class B> struct Pair {
};
template <class A> struct Holder {
    struct Nested {};
};

} // namespace Inner

namespace {
struct Local {};
} // namespace

} // namespace ZemTypeHelperTest

namespace {

using namespace ZemTypeHelperTest;
using Zem::TypeHelper;

TEST(TypeHelperTest, NamesOfNamespacedAndTemplateTypes)
{
    struct Row {
        std::string full, shortName, expectedFull, expectedShort;
    };
    using Nested = Inner::Pair<Inner::Pair<double, Inner::Sample>, Inner::Sample*>;
    const Row rows[] = {
        {TypeHelper::getTypeName<int>(), TypeHelper::getShortTypeName<int>(), "int", "int"},
        {TypeHelper::getTypeName<Nested>(), TypeHelper::getShortTypeName<Nested>(),
         "ZemTypeHelperTest::Inner::Pair<ZemTypeHelperTest::Inner::Pair<double, ZemTypeHelperTest::Inner::Sample>, "
         "ZemTypeHelperTest::Inner::Sample*>",
         "Pair<Pair<double, Sample>, Sample*>"},
        {TypeHelper::getTypeName(typeid(Inner::Holder<Inner::Sample>::Nested)),
         TypeHelper::getShortTypeName(typeid(Inner::Holder<Inner::Sample>::Nested)),
         "ZemTypeHelperTest::Inner::Holder<ZemTypeHelperTest::Inner::Sample>::Nested", "Nested"},
        {TypeHelper::getTypeName<Local>(), TypeHelper::getShortTypeName<Local>(),
         "ZemTypeHelperTest::(anonymous namespace)::Local", "Local"},
        {TypeHelper::getTypeName<std::map<int, Inner::Sample>>(),
         TypeHelper::getShortTypeName<std::map<int, Inner::Sample>>(),
         "std::map<int, ZemTypeHelperTest::Inner::Sample, std::less<int>, "
         "std::allocator<std::pair<int const, ZemTypeHelperTest::Inner::Sample> > >",
         "map<int, Sample, less<int>, allocator<pair<int const, Sample> > >"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.expectedFull);
        EXPECT_EQ(row.full, row.expectedFull);
        EXPECT_EQ(row.shortName, row.expectedShort);
    }
}

TEST(TypeHelperTest, StripQualifiersToleratesOddTexts)
{
    EXPECT_EQ(TypeHelper::stripQualifiers(""), "");
    EXPECT_EQ(TypeHelper::stripQualifiers("::Global"), "Global");
    EXPECT_EQ(TypeHelper::stripQualifiers("Foo<(Zem::Kind)1>"), "Foo<(Kind)1>");
    // Unbalanced brackets come from no demangler, but must not crash.
    EXPECT_NO_THROW(TypeHelper::stripQualifiers("a>>)::b"));
}

// Each name is set on a thread of its own, so the test runner's thread keeps its name.
std::string nameSetOnFreshThread(const char* name)
{
    std::string seen;
    std::thread thread([&] {
        Zem::ThreadHelper::setCurrentThreadName(name);
        seen = Zem::ThreadHelper::getCurrentThreadName();
    });
    thread.join();
    return seen;
}

TEST(ThreadHelperTest, NamesAreCutToWhatLinuxKeeps)
{
    struct Row {
        const char* name;
        const char* given;
        std::string expected;
    };
    const std::vector<Row> rows = {
        {"short", "worker", "worker"},
        {"exactly 15 bytes", "abcdefghijklmno", "abcdefghijklmno"},
        {"long", "ZemTree_TestQueueEvaluator", "ZemTree_TestQue"},
        {"UTF-8 ending at the limit", "Поток_проверки", "Поток_пр"},
        // Here 15 bytes would end inside a two-byte Cyrillic letter: the whole letter goes.
        {"UTF-8 letter across the limit", "Потокпроверки", "Потокпр"},
        {"null", nullptr, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(nameSetOnFreshThread(row.given), row.expected);
    }
}

struct Shape {
    virtual ~Shape() = default;
    virtual std::string kind() const = 0;
};

struct Circle : Shape {
    std::string kind() const override { return "circle"; }
};

struct Square : Shape {
    std::string kind() const override { return "square"; }
};

std::unique_ptr<Shape> makeCircle()
{
    return std::make_unique<Circle>();
}

std::unique_ptr<Shape> makeSquare()
{
    return std::make_unique<Square>();
}

TEST(UniversalFactoryTest, RegisteredTypeIsMadeByItsTypeName)
{
    Zem::UniversalFactory<Shape> factory;
    EXPECT_TRUE(factory.registerType<Circle>());
    const std::string name = Zem::TypeHelper::getTypeName(typeid(Circle));
    ASSERT_TRUE(factory.isRegistered(name));

    const std::unique_ptr<Shape> first = factory.create(name);
    const std::unique_ptr<Shape> second = factory.create(name);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->kind(), "circle");
    EXPECT_NE(first.get(), second.get());
    // An unknown name gives null.
    EXPECT_FALSE(factory.isRegistered(Zem::TypeHelper::getTypeName(typeid(Square))));
    EXPECT_EQ(factory.create(Zem::TypeHelper::getTypeName(typeid(Square))), nullptr);
}

TEST(UniversalFactoryTest, FirstRegistrationOfANameWins)
{
    Zem::UniversalFactory<Shape> factory;
    EXPECT_TRUE(factory.registerType("shape", &makeCircle));
    EXPECT_TRUE(factory.registerType("shape", &makeSquare));
    EXPECT_EQ(factory.create("shape")->kind(), "circle");

    EXPECT_TRUE(factory.registerType<Square>());
    EXPECT_TRUE(factory.registerType<Square>());
    EXPECT_EQ(factory.getTypeNames().size(), 2u);
}

} // namespace
