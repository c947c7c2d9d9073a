// The core's number, flag and text units: their shown form, bounds, saved form and what they put in a report.

#include "XmlTestSupport.h"
#include "core/common/XmlInclude.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/Measure.h"
#include "core/tree/Measures.h"
#include "core/tree/Node.h"
#include "core/tree/StringUnit.h"
#include "core/tree/TreeLocalization.h"
#include "core/tree/ValueErrors.h"
#include "values/BooleanUnit.h"
#include "values/NumericUnit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using ZemTree::BooleanUnit;
using ZemTree::LocalString;
using ZemTree::NumericUnit;
using ZemTree::SerializationMode;
using ZemTreeTest::loadFromString;
using ZemTreeTest::makeMode;
using ZemTreeTest::saveToString;

// The attributes of the unit's report element.
std::map<std::string, std::string> reportOf(const ZemTree::Node& unit)
{
    ZemTree::DisplayXmlParameters parameters("/tmp");
    xmlpp::Document document;
    xmlpp::Element* const report = document.create_root_node("Report");
    unit.getDisplayXml(parameters, report);
    std::map<std::string, std::string> attributes;
    const auto* own = dynamic_cast<const xmlpp::Element*>(report->get_children().front());
    if (own == nullptr)
        return attributes;
    for (const xmlpp::Attribute* attribute : own->get_attributes())
        attributes[attribute->get_name()] = attribute->get_value();
    return attributes;
}

class CoreUnitsTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = 0; }
};

TEST_F(CoreUnitsTest, NumbersShowAtMostTheirPrecisionWithoutTrailingZeros)
{
    const struct {
        double number;
        int precision;
        const char* shown;
    } rows[] = {
        {2.5, 6, "2.5"},       {90.0, 6, "90"},         {0.1 + 0.2, 6, "0.3"},      {1.0 / 3.0, 3, "0.333"},
        {-0.0004, 3, "0"},     {1234567.891, 0, "1234568"}, {1e-9, 6, "0"},         {-2.25, 1, "-2.2"},
        {1e20, 2, "100000000000000000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.shown);
        EXPECT_EQ(row.shown, NumericUnit::formatNumber(row.number, row.precision));
    }
    EXPECT_EQ("nan", NumericUnit::formatNumber(std::nan(""), 3));
    EXPECT_THROW(NumericUnit("N").setPrecision(16), std::logic_error);
}

TEST_F(CoreUnitsTest, NumberOutsideItsBoundsStaysButShowsTheRangeError)
{
    ZemTree::Node root("Root");
    NumericUnit* const unit = root.add(std::make_unique<NumericUnit>("Step"));
    unit->setBounds(0.0, 10.0);
    EXPECT_THROW(unit->setBounds(5.0, 1.0), std::logic_error);

    const struct {
        const char* text;
        bool isFormula;
        const char* source;
        double data;
        bool inRange;
    } rows[] = {
        {"inside", false, "", 4.0, true},       {"on the upper bound", false, "", 10.0, true},
        {"above", false, "", 10.5, false},      {"below", false, "", -1.0, false},
        {"a formula above", true, "6*2", 0.0, false}, {"a formula inside", true, "6/2", 0.0, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        unit->setIsFormulaSource(row.isFormula);
        unit->setFormula(row.source);
        unit->setData(row.data);
        if (row.inRange) {
            EXPECT_EQ(nullptr, unit->getError());
            continue;
        }
        ASSERT_NE(nullptr, unit->getError());
        EXPECT_NE(nullptr, dynamic_cast<const ZemTree::OutOfRangeError*>(unit->getError().get()));
        EXPECT_NE(std::string::npos, std::string(unit->getError()->what()).find("[0; 10]"));
        if (!row.isFormula) {
            EXPECT_EQ(row.data, unit->getNativeData()) << "the number the user set stays";
        }
    }
    unit->setIsFormulaSource(false);
    unit->setData(12.0);
    unit->setBounds(Zem::Nullable<double>(), Zem::Nullable<double>());
    EXPECT_EQ(nullptr, unit->getError()) << "lifting the bounds judges the value again";
}

TEST_F(CoreUnitsTest, SavedFormsReadBackAndBrokenOnesAreReported)
{
    ZemTree::Node root("Root");
    NumericUnit* const number = root.add(std::make_unique<NumericUnit>("Number"));
    BooleanUnit* const flag = root.add(std::make_unique<BooleanUnit>("Flag"));
    number->setData(0.1234567890123);
    flag->setData(true);
    const std::string saved = saveToString(root, makeMode(SerializationMode::User));
    EXPECT_NE(std::string::npos, saved.find(R"(<Value Data="0.1234567890123"/>)")) << saved;
    EXPECT_NE(std::string::npos, saved.find(R"(<Value Data="true"/>)")) << saved;

    ZemTree::Node target("Root");
    NumericUnit* const readNumber = target.add(std::make_unique<NumericUnit>("Number"));
    BooleanUnit* const readFlag = target.add(std::make_unique<BooleanUnit>("Flag"));
    loadFromString(target, saved, makeMode(SerializationMode::User));
    EXPECT_EQ(0.1234567890123, readNumber->getValueOut().value);
    EXPECT_TRUE(readFlag->getValueOut().value);
    EXPECT_EQ(saved, saveToString(target, makeMode(SerializationMode::User)));

    const struct {
        const char* text;
        const char* xml;
        const char* problem;
    } broken[] = {
        {"a number with a comma", R"(<Node Id="Number"><Value Data="1,5"/></Node>)", "is not a number: 1,5"},
        {"a number without data", R"(<Node Id="Number"><Value/></Node>)", "has no Data"},
        {"a flag spelled as a word", R"(<Node Id="Flag"><Value Data="yes"/></Node>)", "neither true nor false"},
    };
    for (const auto& row : broken) {
        SCOPED_TRACE(row.text);
        std::vector<std::string> problems;
        loadFromString(target, std::string(R"(<Root><Node Id="Root">)") + row.xml + "</Node></Root>",
                       makeMode(SerializationMode::User, &problems));
        ASSERT_EQ(1u, problems.size());
        EXPECT_NE(std::string::npos, problems[0].find(row.problem)) << problems[0];
        EXPECT_EQ(0.1234567890123, readNumber->getValueOut().value);
        EXPECT_TRUE(readFlag->getValueOut().value);
    }
}

TEST_F(CoreUnitsTest, ReportCarriesValueMeasureFormulaAndError)
{
    ZemTree::Node root("Root");
    root.add(std::make_unique<NumericUnit>("Current", LocalString("Current"), LocalString::Empty(), 1.25,
                                               ZemTree::Measures::Ampere()));
    NumericUnit* const computed = root.add(std::make_unique<NumericUnit>("Computed"));
    NumericUnit* const broken = root.add(std::make_unique<NumericUnit>("Broken"));
    BooleanUnit* const flag = root.add(std::make_unique<BooleanUnit>("Flag"));
    computed->setFormula("{../Current}*2");
    computed->setIsFormulaSource(true);
    broken->setFormula("2*");
    broken->setIsFormulaSource(true);
    root.add(std::make_unique<ZemTree::StringUnit>("Text", LocalString("Text"), LocalString::Empty(), "SN-7"));

    for (const int language : {0, 1}) {
        lng::language = language;
        SCOPED_TRACE(language == 0 ? "English" : "Russian");
        const struct {
            const char* id;
            std::map<std::string, std::string> expected;
        } rows[] = {
            {"Current", {{"Value", "1.25"}, {"Measure", ZemTree::Measures::Ampere()->getDescription()}}},
            {"Computed", {{"Value", "2.5"}, {"Formula", "{../Current}*2"}}},
            {"Broken", {{"Formula", "2*"}}},
            {"Flag", {{"Value", lng::Tree::get("Flag.no")}}},
            {"Text", {{"Value", "SN-7"}}},
        };
        for (const auto& row : rows) {
            SCOPED_TRACE(row.id);
            const std::map<std::string, std::string> report = reportOf(*root.findChild(row.id));
            for (const auto& [name, value] : row.expected) {
                ASSERT_TRUE(report.count(name)) << name;
                EXPECT_EQ(value, report.at(name));
            }
            EXPECT_EQ(std::string(row.id) == "Broken", report.count("Error") == 1u);
        }
        EXPECT_NE(std::string(lng::Tree::get("Flag.yes")), lng::Tree::get("Flag.no"));
    }
    flag->setData(true);
    EXPECT_EQ(lng::Tree::get("Flag.yes"), reportOf(*flag).at("Value"));
}

} // namespace
