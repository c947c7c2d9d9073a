#include "results/ResultMultiNumericUnit.h"

#include "ResultUnitTestSupport.h"
#include "core/common/Nullable.h"
#include "core/common/XmlInclude.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/MeasureObject.h"
#include "core/tree/MeasureProperty.h"
#include "core/tree/Measures.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/ToleranceReduced.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiNumeric.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace ResultUnitTest;
using ZemTree::DisplayXmlParameters;
using ZemTree::LocalString;
using ZemTree::Measures;
using ZemTree::NumericSettingAssessment;
using ZemTree::RangeStructure;
using ZemTree::ResultMultiNumeric;
using ZemTree::ResultMultiNumericUnit;
using ZemTree::ResultNumeric;
using ZemTree::ResultState;
using ZemTree::SerializationMode;
using ZemTree::ToleranceReduced;

namespace {

// Setting 2 with an absolute tolerance of ±1.
std::shared_ptr<NumericSettingAssessment> settingTwo()
{
    return std::make_shared<NumericSettingAssessment>(
        2.0, std::make_shared<ToleranceReduced>(Zem::Nullable<RangeStructure>(), RangeStructure::Standart(-1.0, 1.0)));
}

// "Ia" reads 1 and 3 (centre 2, within the tolerance), "Ib" reads 5 (rejected): NotOk as a whole.
std::shared_ptr<ResultMultiNumeric> rejectedResult()
{
    return std::make_shared<ResultMultiNumeric>(
        std::map<std::string, std::vector<std::string>>{{"Ia", {"1", "3"}}, {"Ib", {"5"}}}, settingTwo());
}

std::unique_ptr<ResultMultiNumericUnit> makeUnit(const std::string& id, std::shared_ptr<ResultMultiNumeric> data,
                                                 ZemTree::Measure* measure = nullptr)
{
    return std::make_unique<ResultMultiNumericUnit>(id, LocalString("Currents"), LocalString::Empty(), std::move(data),
                                                    measure);
}

// The unit's report element, written under `root`.
xmlpp::Element* report(const ResultMultiNumericUnit& unit, DisplayXmlParameters& parameters, xmlpp::Element* root)
{
    unit.getDisplayXml(parameters, root);
    return firstChild(root, ZemTree::Node::XmlElementName);
}

} // namespace

TEST(ResultMultiNumericUnitTest, ProjectSaveLoadSaveKeepsResultsAndMeasures)
{
    const LanguageGuard english(0);
    ResultTree tree;
    // The way a test stores its outcome: a new result set into the working value.
    ResultMultiNumericUnit* const rejected = tree.addUnit(makeUnit("Rejected", nullptr, Measures::Ampere()));
    rejected->setData(rejectedResult());
    tree.addUnit(makeUnit(
        "Reference",
        std::make_shared<ResultMultiNumeric>(std::map<std::string, std::vector<std::string>>{{"U", {"0.25"}}}, nullptr),
        Measures::Volt()));
    tree.addUnit(makeUnit("Untested", nullptr));
    tree.addUnit(makeUnit("Empty", std::make_shared<ResultMultiNumeric>()));

    std::vector<std::string> problems;
    const std::string first = saveToString(tree.root, makeMode(SerializationMode::User, &problems));
    ResultTree loaded;
    loadFromString(loaded.root, first, makeMode(SerializationMode::User, &problems));
    EXPECT_EQ(saveToString(loaded.root, makeMode(SerializationMode::User, &problems)), first);
    EXPECT_TRUE(problems.empty()) << problems.front();

    const auto* const readRejected = loaded.find<ResultMultiNumericUnit>("Rejected");
    ASSERT_NE(readRejected, nullptr);
    const std::shared_ptr<ResultMultiNumeric>& result = readRejected->getValue();
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->getState(), ResultState::NotOk) << "the verdict is worked out again on reading";
    ASSERT_EQ(result->_items.size(), 2u);
    EXPECT_EQ(result->_items.at("Ia").getMeasurmentCollection(), (std::vector<std::string>{"1", "3"}));
    EXPECT_EQ(result->_items.at("Ia").getState(), ResultState::Ok);
    EXPECT_EQ(result->_items.at("Ib").getState(), ResultState::NotOk);
    EXPECT_EQ(result->_items.at("Ib").getDeviation(), rejected->getValue()->_items.at("Ib").getDeviation());
    const auto* const setting = dynamic_cast<const NumericSettingAssessment*>(result->getAssessment());
    ASSERT_NE(setting, nullptr);
    EXPECT_EQ(setting->getSetting(), 2.0);
    EXPECT_EQ(readRejected->getMeasureData()->getMeasure(), Measures::Ampere());

    const auto* const reference = loaded.find<ResultMultiNumericUnit>("Reference");
    ASSERT_NE(reference, nullptr);
    ASSERT_NE(reference->getValue(), nullptr);
    EXPECT_EQ(reference->getValue()->getState(), ResultState::Ok);
    EXPECT_EQ(reference->getValue()->getAssessment(), nullptr);
    EXPECT_EQ(reference->getMeasureData()->getMeasure(), Measures::Volt());

    const auto* const untested = loaded.find<ResultMultiNumericUnit>("Untested");
    ASSERT_NE(untested, nullptr);
    EXPECT_EQ(untested->getValue(), nullptr);
    const auto* const empty = loaded.find<ResultMultiNumericUnit>("Empty");
    ASSERT_NE(empty, nullptr);
    ASSERT_NE(empty->getValue(), nullptr);
    EXPECT_TRUE(empty->getValue()->isEmpty());
}

TEST(ResultMultiNumericUnitTest, MeasureIsAPropertyChildSavedByItsKey)
{
    ResultMultiNumericUnit unit("U", LocalString::Empty(), LocalString::Empty(), nullptr, Measures::Ohm());
    ZemTree::MeasureObject* const measure = unit.getMeasureData();
    ASSERT_NE(measure, nullptr);
    ASSERT_NE(measure->getProperty(), nullptr);
    EXPECT_EQ(measure->getProperty()->getId(), "Measure");
    EXPECT_EQ(measure->getProperty()->getParent(), &unit);
    EXPECT_EQ(unit.findChild("Measure"), measure->getProperty());

    xmlpp::Document document;
    xmlpp::Element* const own = unit.getXml(document.create_root_node("Root"), makeMode(SerializationMode::User));
    const std::vector<xmlpp::Element*> nodes = children(own, ZemTree::Node::XmlElementName);
    ASSERT_EQ(nodes.size(), 1u);
    EXPECT_EQ(attribute(nodes[0], "Id"), "Measure");
    EXPECT_EQ(attribute(nodes[0], "Value"), "Ohm");
    EXPECT_EQ(attribute(nodes[0], "Class"), "<none>") << "the property belongs to the unit's fixed structure";

    // Both kinds of save carry the measure; the template's measure reaches a fresh unit.
    for (std::uint8_t kind : {SerializationMode::System, SerializationMode::User}) {
        SCOPED_TRACE(static_cast<int>(kind));
        std::vector<std::string> problems;
        ResultMultiNumericUnit read;
        loadFromString(read, saveToString(unit, makeMode(kind)), makeMode(kind, &problems));
        EXPECT_EQ(read.getMeasureData()->getMeasure(), Measures::Ohm());
        EXPECT_EQ(read.size(), 1u) << "the saved property is read into the unit's own";
        EXPECT_TRUE(problems.empty());
    }
}

TEST(ResultMultiNumericUnitTest, ReportWithSettingCarriesSettingDeviationsAndMeasure)
{
    const LanguageGuard english(0);
    const auto unit = makeUnit("U", rejectedResult(), Measures::Ampere());
    xmlpp::Document document;
    DisplayXmlParameters parameters("/nonexistent");
    xmlpp::Element* const own = report(*unit, parameters, document.create_root_node("Report"));
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(attribute(own, "DataType"), "ResultMultiNumeric");
    EXPECT_EQ(attribute(own, "Measure"), "A");
    EXPECT_EQ(text(firstChild(own, "Value")), "2");

    const std::vector<xmlpp::Element*> values = children(firstChild(own, "Items"), "Value");
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(attributeNames(values[0]), (std::vector<std::string>{"Key", "State", "Deviation"}));
    EXPECT_EQ(attribute(values[0], "Key"), "Ia");
    EXPECT_EQ(attribute(values[0], "State"), "ok");
    EXPECT_EQ(text(values[0]), "2±1");
    EXPECT_EQ(attribute(values[0], "Deviation"), "-1") << "the worse end, 1, is judged";
    EXPECT_EQ(attribute(values[1], "Key"), "Ib");
    EXPECT_EQ(attribute(values[1], "State"), "?not ok");
    EXPECT_EQ(text(values[1]), "5");
    EXPECT_EQ(attribute(values[1], "Deviation"), "+3");
}

TEST(ResultMultiNumericUnitTest, ReportWithoutSettingHasNoSettingNoDeviationNoMeasure)
{
    const LanguageGuard english(0);
    const auto unit = makeUnit("U", std::make_shared<ResultMultiNumeric>(
                                        std::map<std::string, std::vector<std::string>>{{"x", {"abc"}}}, nullptr));
    xmlpp::Document document;
    DisplayXmlParameters parameters("/nonexistent");
    xmlpp::Element* const own = report(*unit, parameters, document.create_root_node("Report"));
    EXPECT_EQ(attribute(own, "Measure"), "<none>");
    EXPECT_EQ(firstChild(own, "Value"), nullptr);
    const std::vector<xmlpp::Element*> values = children(firstChild(own, "Items"), "Value");
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(attributeNames(values[0]), (std::vector<std::string>{"Key", "State"}));
    EXPECT_EQ(attribute(values[0], "State"), "abc") << "an unreadable number names itself";
    EXPECT_EQ(text(values[0]), "");
}

TEST(ResultMultiNumericUnitTest, ReportOfNoResultOrEmptyResultHasNoValue)
{
    struct Row {
        const char* text;
        std::shared_ptr<ResultMultiNumeric> data;
    };
    const Row rows[] = {
        {"no result", nullptr},
        {"empty result", std::make_shared<ResultMultiNumeric>()},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto unit = makeUnit("U", row.data, Measures::Volt());
        xmlpp::Document document;
        DisplayXmlParameters parameters("/nonexistent");
        xmlpp::Element* const own = report(*unit, parameters, document.create_root_node("Report"));
        ASSERT_NE(own, nullptr);
        EXPECT_EQ(attribute(own, "DataType"), "ResultMultiNumeric");
        EXPECT_EQ(attribute(own, "Measure"), "V") << "the parameters do not depend on the result";
        EXPECT_TRUE(children(own, "Items").empty());
        EXPECT_TRUE(children(own, "Value").empty());
    }
}

// Only an item that is still empty carries IsValid, and then it says "false"; a rejected item has none.
TEST(ResultMultiNumericUnitTest, IsValidIsWrittenForEmptyItemsOnly)
{
    const LanguageGuard english(0);
    auto result = rejectedResult();
    result->_items.emplace("Ic", ResultNumeric());
    const auto unit = makeUnit("U", result);
    xmlpp::Document document;
    DisplayXmlParameters parameters("/nonexistent");
    xmlpp::Element* const own = report(*unit, parameters, document.create_root_node("Report"));
    const std::vector<xmlpp::Element*> values = children(firstChild(own, "Items"), "Value");
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(attribute(values[0], "IsValid"), "<none>");
    EXPECT_EQ(attribute(values[1], "IsValid"), "<none>");
    EXPECT_EQ(attribute(values[2], "Key"), "Ic");
    EXPECT_EQ(attribute(values[2], "State"), "not tested");
    EXPECT_EQ(attribute(values[2], "IsValid"), "false");
}
