#include "TreeTestNodes.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/ActionUnit.h"
#include "core/tree/DataObj.h"
#include "core/tree/Deviation.h"
#include "core/tree/ExtendedTypeInfo.h"
#include "core/tree/ExtendedTypeInfoTypeConverter.h"
#include "core/tree/IActionEngineAPI.h"
#include "core/tree/LocalString.h"
#include "core/tree/LocalStringTypeConverter.h"
#include "core/tree/Measure.h"
#include "core/tree/MeasureObject.h"
#include "core/tree/MeasureProperty.h"
#include "core/tree/MeasureTypeConverter.h"
#include "core/tree/Measures.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/StringUnit.h"
#include "core/tree/Tolerance.h"
#include "core/tree/ToleranceHelper.h"
#include "core/tree/ToleranceReduced.h"
#include "core/tree/ToleranceReducedTypeConverter.h"
#include "core/tree/TreeLocalization.h"
#include "core/tree/Unitable.h"
#include "core/tree/ValueErrors.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using ZemTree::DataObj;

namespace {

struct Opaque {
    int number = 0;
};

// A writer that fails with something other than a missing text form.
class Failing {
public:
    void operator>>(std::ostringstream&) const { throw std::runtime_error("disk on fire"); }
};

} // namespace

TEST(DataObjTest, TypeWithoutTextFormAnswersFalseAndLeavesTheText)
{
    std::string text = "untouched";
    EXPECT_FALSE(DataObj<Opaque>(Opaque{4}).tryConvertToString(text));
    EXPECT_EQ(text, "untouched");
    // Only the refusal of the conversion is an answer; other failures are not hidden.
    EXPECT_THROW(DataObj<Failing>(Failing{}).tryConvertToString(text), std::runtime_error);
    EXPECT_EQ(text, "untouched");

    EXPECT_TRUE(DataObj<double>(0.1 + 0.2).tryConvertToString(text));
    EXPECT_EQ(text, "0.3");
}

namespace {

using Zem::Nullable;
using ZemTree::Deviation;

struct DisplayRow {
    const char* text;
    Nullable<double> relative;
    Nullable<double> absolute;
    const char* expected;
};

TEST(DeviationTest, DisplayValueShowsTheSetPartsWithTheirSigns)
{
    const DisplayRow rows[] = {
        {"neither", {}, {}, ""},
        {"both positive", 1.25, 0.0125, "+1.25 % / +0.0125"},
        {"relative only", -3.0, {}, "-3 %"},
        {"absolute only", {}, 0.5, "+0.5"},
        {"zeros carry no sign", 0.0, -0.0, "0 % / 0"},
        {"noise of the arithmetic", {}, 10.1 - 10.0, "+0.1"},
        {"negative keeps its digits", {}, -1.23456789, "-1.23456789"},
        {"tiny is zero", {}, 1e-15, "0"},
    };
    for (const DisplayRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.expected, Deviation(row.relative, row.absolute).getDisplayValue());
    }
}

using ZemTree::ExtendedTypeInfo;
using ZemTree::ExtendedTypeInfoTypeConverter;

struct SampleType {};

TEST(ExtendedTypeInfoTest, TextRoundTrip)
{
    struct Row {
        const char* text;
        ExtendedTypeInfo info;
    };
    const Row rows[] = {
        {"undefined", ExtendedTypeInfo()},
        {"template name", ExtendedTypeInfo::of<std::map<int, SampleType>>()},
        {"qualifier holding the separator", ExtendedTypeInfo("ZemTree::Unit", "a#b#")},
        {"qualifier without name", ExtendedTypeInfo("", "q")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string text = ExtendedTypeInfoTypeConverter::toStringData(row.info);
        const ExtendedTypeInfo read = ExtendedTypeInfoTypeConverter::fromStringData(text);
        EXPECT_EQ(row.info, read);
        EXPECT_EQ(text, ExtendedTypeInfoTypeConverter::toStringData(read));
    }
}

TEST(ExtendedTypeInfoTest, ParsesAnyText)
{
    EXPECT_FALSE(ExtendedTypeInfoTypeConverter::fromStringData("").isDefined());
    const ExtendedTypeInfo info = ExtendedTypeInfoTypeConverter::fromStringData("#");
    EXPECT_FALSE(info.isDefined());
    EXPECT_EQ("", info.getQualifier());
    EXPECT_EQ("T", ExtendedTypeInfoTypeConverter::fromStringData("T#").getTypeName());
    EXPECT_THROW(ExtendedTypeInfo("a#b"), std::logic_error);
}

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

using namespace ZemTree;

TEST(MeasureObjectTest, FollowsThePropertysMeasure)
{
    MeasureProperty property("Measure", LocalString("Measure"), LocalString(), Measures::Ohm());
    MeasureObject object(&property);
    int fired = 0;
    object.getSignalMeasureChanged().connect([&] {
        ++fired;
        EXPECT_EQ(object.getMeasureValue(), Measures::Second());
    });
    EXPECT_EQ(object.getMeasureValue(), Measures::Ohm());
    property.setValue(Measures::Second());
    EXPECT_EQ(fired, 1);
    property.setValue(Measures::Second());
    EXPECT_EQ(fired, 1);
}

TEST(MeasureObjectTest, WithoutMeasureGivesNone)
{
    EXPECT_EQ(MeasureObject(nullptr).getMeasureValue(), Measures::None());
    MeasureProperty empty;
    EXPECT_EQ(MeasureObject(&empty).getMeasureValue(), Measures::None());

    // A property destroyed first is forgotten, not read.
    auto property = std::make_unique<MeasureProperty>("Measure", LocalString(), LocalString(), Measures::Volt());
    const MeasureObject object(property.get());
    property.reset();
    EXPECT_EQ(object.getMeasure(), nullptr);
    EXPECT_EQ(object.getMeasureValue(), Measures::None());
}

namespace {

using ZemTree::Measure;
using ZemTree::Measures;
using ZemTree::MeasureTypeConverter;

TEST(MeasureTypeConverterTest, EveryInstanceRoundTrips)
{
    const Measure* const named[] = {Measures::None(), Measures::Ohm(),    Measures::Gradus(), Measures::Second(),
                                    Measures::Volt(), Measures::Ampere(), Measures::Hertz(),  Measures::Percent()};
    EXPECT_EQ(std::size(named), Measures::all().size());

    std::set<std::string> keys;
    for (const Measure* measure : named) {
        ASSERT_NE(nullptr, measure);
        SCOPED_TRACE(measure->getKey());
        const std::string text = MeasureTypeConverter::toStringData(measure);
        EXPECT_EQ(measure, MeasureTypeConverter::fromStringData(text));
        EXPECT_EQ(measure, Measures::find(measure->getKey()));
        keys.insert(text);
    }
    EXPECT_EQ(std::size(named), keys.size());
}

TEST(MeasureTypeConverterTest, UnknownTextGivesNull)
{
    for (const char* text : {"", "ohm", "Ohm ", "Ом"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(nullptr, MeasureTypeConverter::fromStringData(text));
    }
    EXPECT_EQ("", MeasureTypeConverter::toStringData(nullptr));
}

using ZemTree::RangeStructure;

std::string textOf(const RangeStructure& range)
{
    std::ostringstream stream;
    range >> stream;
    return stream.str();
}

TEST(RangeStructureTest, ContainsBothBoundsAndNothingElse)
{
    const RangeStructure range = RangeStructure::Standart(5.0, -5.0);
    EXPECT_EQ(range, RangeStructure::Standart(-5.0, 5.0)) << "the bounds are put in order";
    EXPECT_TRUE(range.contains(-5.0));
    EXPECT_TRUE(range.contains(5.0));
    EXPECT_FALSE(range.contains(5.000000001));
    EXPECT_FALSE(range.contains(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_TRUE(RangeStructure::Standart(0.0, 0.0).contains(-0.0));

    const RangeStructure empty;
    EXPECT_FALSE(empty.contains(0.0));
    EXPECT_NE(empty, RangeStructure::Standart(0.0, 0.0));
    EXPECT_THROW(RangeStructure::Standart(std::nan(""), 1.0), std::logic_error);
}

TEST(RangeStructureTest, TextReadsBackToTheSameRange)
{
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        RangeStructure range;
        const char* text;
    } rows[] = {
        {RangeStructure(), "[]"},
        {RangeStructure::Standart(-5.0, 5.0), "[-5;5]"},
        {RangeStructure::Standart(-0.123456789, 1e-20), "[-0.123456789;1e-20]"},
        {RangeStructure::Standart(1.0 / 3.0, 2.0 / 3.0), nullptr},
        {RangeStructure::Standart(-inf, inf), "[-inf;inf]"},
        {RangeStructure::Standart(-0.0, 0.0), "[-0;0]"},
    };
    for (const auto& row : rows) {
        const std::string text = textOf(row.range);
        SCOPED_TRACE(text);
        if (row.text != nullptr) {
            EXPECT_EQ(row.text, text);
        }
        RangeStructure back = RangeStructure::Standart(7.0, 8.0);
        std::istringstream stream(text);
        back << stream;
        EXPECT_FALSE(stream.bad());
        EXPECT_EQ(row.range, back);
        EXPECT_EQ(text, textOf(back));
    }
}

TEST(RangeStructureTest, MalformedTextSetsBadbitAndKeepsTheRange)
{
    for (const char* text :
         {"", "[", "[1;]", "[1;2", "[1;2] ", " [1;2]", "[1; 2]", "[1;2;3]", "[a;b]", "[nan;1]", "[2;1]", "[1,5;2]"}) {
        SCOPED_TRACE(text);
        RangeStructure range = RangeStructure::Standart(7.0, 8.0);
        std::istringstream stream(text);
        range << stream;
        EXPECT_TRUE(stream.bad());
        EXPECT_EQ(RangeStructure::Standart(7.0, 8.0), range);
    }
}

using ZemTree::Tolerance;
using ZemTree::ToleranceItem;

std::unique_ptr<ToleranceItem> item(double from, double to, Zem::Nullable<RangeStructure> relative,
                                    Zem::Nullable<RangeStructure> absolute)
{
    return std::make_unique<ToleranceItem>(RangeStructure::Standart(from, to), relative, absolute);
}

std::string textOf(const Tolerance& tolerance)
{
    std::ostringstream stream;
    tolerance >> stream;
    return stream.str();
}

TEST(ToleranceTest, TextReadsBackToTheSameTolerance)
{
    const RangeStructure five = RangeStructure::Standart(-5.0, 5.0);
    const RangeStructure small = RangeStructure::Standart(-0.01, 0.02);
    const double inf = std::numeric_limits<double>::infinity();

    Tolerance empty;
    Tolerance one;
    one.add(item(0.0, 10.0, five, {}));
    Tolerance several;
    several.add(item(-inf, 1.0, {}, small));
    several.add(item(1.0, 2.0 / 3.0 * 10.0, five, small));
    several.add(item(7.0, inf, {}, {}));
    several.add(std::make_unique<ToleranceItem>());

    const struct {
        const Tolerance* tolerance;
        const char* text;
    } rows[] = {
        {&empty, ""},
        {&one, "[0;10]:[-5;5]|"},
        {&several, nullptr},
    };
    for (const auto& row : rows) {
        const std::string text = textOf(*row.tolerance);
        SCOPED_TRACE(text);
        if (row.text != nullptr) {
            EXPECT_EQ(row.text, text);
        }
        std::shared_ptr<Tolerance> back;
        ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<Tolerance>, true, true>(text, back)));
        ASSERT_NE(nullptr, back);
        EXPECT_TRUE(back->isEqualTo(*row.tolerance));
        EXPECT_EQ(text, (Zem::convertToString<std::shared_ptr<Tolerance>, true, true>(back)));
    }
    EXPECT_EQ("[-inf;1]:|[-0.01;0.02] [1;6.666666666666666]:[-5;5]|[-0.01;0.02] [7;inf]:| []:|", textOf(several));
}

TEST(ToleranceTest, MalformedTextSetsBadbitAndKeepsTheItems)
{
    for (const char* text :
         {" ", "[0;1]:| ", "[0;1]:|  [1;2]:|", "[0;1]", "[0;1]:[1;2]", "[0;1]:|:|", "[a;1]:|", "[0;1]:[2;1]|"}) {
        SCOPED_TRACE(text);
        Tolerance tolerance;
        tolerance.add(item(1.0, 2.0, RangeStructure::Standart(-1.0, 1.0), {}));
        std::istringstream stream(text);
        tolerance << stream;
        EXPECT_TRUE(stream.bad());
        ASSERT_EQ(1u, tolerance.size());
        EXPECT_EQ(RangeStructure::Standart(1.0, 2.0), tolerance.at(0)->getArgument());
    }
}

TEST(ToleranceTest, ReadingReplacesTheItemsAndSignals)
{
    Tolerance tolerance;
    tolerance.add(item(0.0, 1.0, {}, {}));
    tolerance.add(item(1.0, 2.0, {}, {}));
    int signals = 0;
    tolerance.getSignalStructureChanged().connect([&signals] { ++signals; });

    std::istringstream stream("[5;6]:[-1;1]|");
    tolerance << stream;
    EXPECT_FALSE(stream.bad());
    ASSERT_EQ(1u, tolerance.size());
    EXPECT_EQ(RangeStructure::Standart(5.0, 6.0), tolerance.at(0)->getArgument());
    EXPECT_EQ(RangeStructure::Standart(-1.0, 1.0), tolerance.at(0)->getRelative().getValue());
    EXPECT_FALSE(tolerance.at(0)->getAbsolute().hasValue());
    EXPECT_EQ(3, signals); // two removals and one addition

    std::istringstream bad("[5;6]:[-1;1]");
    tolerance << bad;
    EXPECT_EQ(3, signals);
}

TEST(ToleranceTest, ItemChangesReachTheToleranceOnce)
{
    Tolerance tolerance;
    ToleranceItem* first = tolerance.add(item(0.0, 1.0, {}, {}));
    int signals = 0;
    tolerance.getSignalStructureChanged().connect([&signals] { ++signals; });

    first->setRelative(RangeStructure::Standart(-2.0, 2.0));
    EXPECT_EQ(1, signals);
    first->setRelative(RangeStructure::Standart(-2.0, 2.0));
    first->setAbsolute(Zem::Nullable<RangeStructure>());
    first->setArgument(RangeStructure::Standart(1.0, 0.0));
    EXPECT_EQ(1, signals); // equal values change nothing
    first->setAbsolute(RangeStructure());
    first->setArgument(RangeStructure::Standart(0.0, 3.0));
    EXPECT_EQ(3, signals);

    std::istringstream same("[0;3]:[-2;2]|[]");
    *first << same;
    EXPECT_EQ(3, signals);

    std::unique_ptr<ToleranceItem> removed = tolerance.release(first);
    EXPECT_EQ(4, signals);
    removed->setArgument(RangeStructure());
    EXPECT_EQ(4, signals);
}

using ZemTree::ToleranceHelper;
using ZemTree::ToleranceReduced;

RangeStructure symmetric(double half)
{
    return RangeStructure::Standart(-half, half);
}

void addItem(Tolerance& tolerance, double from, double to, double relative)
{
    tolerance.add(std::make_unique<ToleranceItem>(RangeStructure::Standart(from, to), symmetric(relative),
                                                  Zem::Nullable<RangeStructure>()));
}

TEST(ToleranceHelperTest, ReduceFollowsTheItemsWithGapsAndEnds)
{
    // Items given out of order, overlapping on [2;3] and with a gap from 5 to 8.
    Tolerance tolerance;
    addItem(tolerance, 2.0, 5.0, 2.0);
    addItem(tolerance, 0.0, 3.0, 1.0);
    addItem(tolerance, 8.0, 10.0, 3.0);
    tolerance.add(std::make_unique<ToleranceItem>()); // applies nowhere
    const ToleranceReduced zero = ToleranceReduced::Zero();
    const auto relative = [](double half) { return ToleranceReduced(symmetric(half), {}); };

    const struct {
        double value;
        ToleranceReduced expected;
        const char* text;
    } rows[] = {
        {-1.0, relative(1.0), "below all: the lowest item"},
        {1.5, relative(1.0), "inside the second item only"},
        {2.5, relative(2.0), "overlap: the first item in the list"},
        {5.0, relative(2.0), "high bound included"},
        {6.0, zero, "in the gap"},
        {8.0, relative(3.0), "after the gap"},
        {1e9, relative(3.0), "above all: the highest item"},
        {std::nan(""), zero, "not a number"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const std::shared_ptr<ToleranceReduced> reduced = ToleranceHelper::reduce(&tolerance, row.value);
        ASSERT_NE(nullptr, reduced);
        EXPECT_EQ(ZemTree::ToleranceReducedTypeConverter::toStringData(row.expected),
                  ZemTree::ToleranceReducedTypeConverter::toStringData(*reduced));
    }
}

TEST(ToleranceHelperTest, NoItemsGiveTheZeroTolerance)
{
    Tolerance empty;
    Tolerance nowhere;
    nowhere.add(std::make_unique<ToleranceItem>());
    const Tolerance* const tolerances[] = {nullptr, &empty, &nowhere};
    for (const Tolerance* tolerance : tolerances) {
        const std::shared_ptr<ToleranceReduced> reduced = ToleranceHelper::reduce(tolerance, 1.0);
        ASSERT_NE(nullptr, reduced);
        EXPECT_EQ(ToleranceReduced::Zero(), *reduced);
    }
}

using ZemTree::ToleranceReducedTypeConverter;

TEST(ToleranceReducedTypeConverterTest, TextReadsBackToAnEqualTolerance)
{
    const RangeStructure relative = RangeStructure::Standart(-5.0, 5.0);
    const RangeStructure absolute = RangeStructure::Standart(-0.1, 0.25);
    const struct {
        ToleranceReduced tolerance;
        const char* text;
    } rows[] = {
        {ToleranceReduced(relative, absolute), "[-5;5]|[-0.1;0.25]"},
        {ToleranceReduced({}, absolute), "|[-0.1;0.25]"},
        {ToleranceReduced(), "|"},
        {ToleranceReduced(RangeStructure(), {}), "[]|"},
        {ToleranceReduced(RangeStructure::Standart(-1.0 / 3.0, 0.7), {}), nullptr},
    };
    for (const auto& row : rows) {
        const std::string text = ToleranceReducedTypeConverter::toStringData(row.tolerance);
        SCOPED_TRACE(text);
        if (row.text != nullptr) {
            EXPECT_EQ(row.text, text);
        }
        ToleranceReduced back(RangeStructure::Standart(1.0, 2.0), RangeStructure::Standart(3.0, 4.0));
        ASSERT_TRUE(ToleranceReducedTypeConverter::fromStringData(text, back));
        EXPECT_EQ(row.tolerance, back);
    }
}

TEST(ToleranceReducedTypeConverterTest, MalformedTextIsRefusedAndLeavesTheTolerance)
{
    for (const char* text : {"", "[-5;5]", "||", "[-5;5] |", "|[1;2]x", "[-5;5]|[2;1]", "[1;2]:[3;4]"}) {
        SCOPED_TRACE(text);
        ToleranceReduced tolerance(RangeStructure::Standart(1.0, 2.0), {});
        EXPECT_FALSE(ToleranceReducedTypeConverter::fromStringData(text, tolerance));
        EXPECT_EQ(ToleranceReduced(RangeStructure::Standart(1.0, 2.0), {}), tolerance);
    }
}

} // namespace

TEST(ValueErrorsTest, FormulaErrorNamesProblemAndPosition)
{
    const FormulaError error("Unknown function 'foo'", 3);
    EXPECT_STREQ(error.what(), "Unknown function 'foo' at position 3");

    // A copy owns its text: the original may be gone when the copy is read.
    std::unique_ptr<FormulaError> original = std::make_unique<FormulaError>("Unexpected end", 12);
    const FormulaError copy = *original;
    original.reset();
    EXPECT_STREQ(copy.what(), "Unexpected end at position 12");
}

namespace {

// Records the hidden hook together with what the unit looked like when the hook ran.
class HiddenProbe : public Unitable {
public:
    using Unitable::Unitable;
    std::vector<bool> hookSaw;

protected:
    void _onIsHiddenChanged() override { hookSaw.push_back(isHidden()); }
};

class CountingAction : public ActionUnit {
public:
    using ActionUnit::ActionUnit;
    int runCount = 0;

protected:
    void _runAction(IActionEngineAPI&) override { ++runCount; }
};

class NotActiveSerializable : public Unitable {
public:
    using Unitable::Unitable;

protected:
    bool _isActiveSerializable() const override { return false; }
};

class FakeEngine : public IActionEngineAPI {};

} // namespace

TEST(UnitableTest, HiddenChangeRunsTheHookBeforeTheSignal)
{
    HiddenProbe unit("Unit");
    std::vector<std::size_t> hookCountAtSignal;
    unit.getSignalIsHiddenChanged().connect([&](Unitable* source) {
        EXPECT_EQ(source, &unit);
        hookCountAtSignal.push_back(unit.hookSaw.size());
    });

    unit.setIsHidden(false);
    EXPECT_TRUE(unit.hookSaw.empty()) << "an equal value changes nothing";
    unit.setIsHidden(true);
    unit.setIsHidden(true);
    unit.setIsHidden(false);
    EXPECT_EQ(unit.hookSaw, (std::vector<bool>{true, false}));
    EXPECT_EQ(hookCountAtSignal, (std::vector<std::size_t>{1, 2}));

    int activeSignals = 0;
    unit.getSignalIsActiveChanged().connect([&](Unitable*) { ++activeSignals; });
    unit.setIsActive(true);
    unit.setIsActive(false);
    unit.setIsActive(false);
    EXPECT_EQ(activeSignals, 1);
}

TEST(UnitableTest, EditableStateInheritsThroughEmptyValues)
{
    struct Row {
        const char* text;
        Zem::NullableBool root;
        Zem::NullableBool child;
        bool expected;
    };
    const Row rows[] = {
        {"nothing set anywhere", {}, {}, true},
        {"child inherits false over a plain node", {false}, {}, false},
        {"child's own true wins", {false}, {true}, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Unitable root("Root");
        Node* plain = root.add(std::make_unique<Node>("Plain"));
        auto* child = plain->add(std::make_unique<Unitable>("Child"));
        root.getIsEditable().set(row.root);
        child->getIsEditable().set(row.child);
        EXPECT_EQ(child->getIsEditable().isEditable(), row.expected);
        EXPECT_EQ(child->getIsEditable().get(), row.child);
    }

    Unitable unit("Unit");
    std::vector<Zem::NullableBool> seen;
    unit.getIsEditable().getSignalChanged().connect([&](const Zem::NullableBool& value) { seen.push_back(value); });
    for (const Zem::NullableBool value : {Zem::NullableBool(true), Zem::NullableBool(true), Zem::NullableBool()})
        unit.getIsEditable().set(value);
    EXPECT_EQ(seen, (std::vector<Zem::NullableBool>{Zem::NullableBool(true), Zem::NullableBool()}));
}

TEST(UnitableTest, ActiveStateIsSavedOnlyWhenTheClassWantsIt)
{
    const SerializationMode mode;
    Unitable plain("Plain");
    plain.setIsActive(false);
    NotActiveSerializable fixed("Fixed");
    fixed.setIsActive(false);

    const std::string plainText = TreeTest::saveToString(plain, mode);
    const std::string fixedText = TreeTest::saveToString(fixed, mode);
    EXPECT_NE(plainText.find("IsActive=\"false\""), std::string::npos);
    EXPECT_EQ(fixedText.find("IsActive"), std::string::npos);

    NotActiveSerializable reader("Fixed");
    TreeTest::loadFromString(reader, plainText, mode);
    EXPECT_TRUE(reader.isActive()) << "an attribute in the file does not reach a class that does not save it";
}

TEST(UnitableTest, ActionUnitEvaluatesWithOrWithoutEngine)
{
    CountingAction action("Action");
    std::vector<std::pair<ActionUnit*, IActionEngineAPI*>> evaluated;
    action.getSignalEvaluated().connect(
        [&](ActionUnit* unit, IActionEngineAPI* api) { evaluated.emplace_back(unit, api); });
    FakeEngine engine;

    struct Row {
        const char* text;
        bool active;
        std::string actionText;
        IActionEngineAPI* api;
        int runs;
    };
    const Row rows[] = {
        {"null engine", true, "go", nullptr, 0},
        {"engine and action", true, "go", &engine, 1},
        {"inactive", false, "go", &engine, 0},
        {"empty action", true, "", &engine, 0},
    };
    std::uint64_t count = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        action.runCount = 0;
        evaluated.clear();
        action.setIsActive(row.active);
        action.setAction(row.actionText);
        action.evaluate(row.api);
        ++count;
        EXPECT_EQ(action.runCount, row.runs);
        EXPECT_EQ(action.getEvaluationCount(), count);
        ASSERT_EQ(evaluated.size(), 1u) << "every evaluation is signalled";
        EXPECT_EQ(evaluated[0].first, &action);
        EXPECT_EQ(evaluated[0].second, row.api);
    }
}

TEST(UnitableTest, StringUnitSignalsRealChangesOnly)
{
    StringUnit unit("Serial", LocalString("Serial"), LocalString(), "A");
    std::vector<std::string> seen;
    unit.getSignalValueChanged().connect([&](StringUnit* source) { seen.push_back(source->getValue()); });
    for (const char* value : {"A", "B", "B", "", "A"})
        unit.setValue(value);
    EXPECT_EQ(seen, (std::vector<std::string>{"B", "", "A"}));
}
