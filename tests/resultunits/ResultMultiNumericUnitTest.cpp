#include "results/ResultMultiNumericUnit.h"

#include "ResultUnitTestSupport.h"
#include "core/common/Nullable.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/MeasureObject.h"
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

// The unit's report element, written into `document`.
xmlpp::Element* report(const ResultMultiNumericUnit& unit, xmlpp::Document& document)
{
    xmlpp::Element* const root = document.create_root_node("Report");
    DisplayXmlParameters parameters("/nonexistent");
    unit.getDisplayXml(parameters, root);
    return firstChild(root, ZemTree::Node::XmlElementName);
}

} // namespace

TEST(ResultMultiNumericUnitTest, ProjectSaveLoadSaveKeepsResultsAndMeasures)
{
    ResultTree tree;
    // The way a test stores its outcome: a new result set into the working value.
    ResultMultiNumericUnit* const rejected = tree.addUnit(makeUnit("Rejected", nullptr, Measures::Ampere()));
    rejected->setData(rejectedResult());
    tree.addUnit(makeUnit("Empty", std::make_shared<ResultMultiNumeric>(), Measures::Volt()));
    const auto loaded = projectRoundTrip(tree);

    const auto* const readRejected = loaded->find<ResultMultiNumericUnit>("Rejected");
    ASSERT_NE(readRejected, nullptr);
    const std::shared_ptr<ResultMultiNumeric>& result = readRejected->getValue();
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->getState(), ResultState::NotOk) << "the verdict is worked out again on reading";
    EXPECT_EQ(result->_items.at("Ia").getMeasurmentCollection(), (std::vector<std::string>{"1", "3"}));
    EXPECT_EQ(result->_items.at("Ib").getDeviation(), rejected->getValue()->_items.at("Ib").getDeviation());
    EXPECT_EQ(readRejected->getMeasureData()->getMeasureValue(), Measures::Ampere());

    // An empty result is not the same as no result.
    const auto* const empty = loaded->find<ResultMultiNumericUnit>("Empty");
    ASSERT_NE(empty, nullptr);
    ASSERT_NE(empty->getValue(), nullptr);
    EXPECT_TRUE(empty->getValue()->isEmpty());
    EXPECT_EQ(empty->getMeasureData()->getMeasureValue(), Measures::Volt());
}

TEST(ResultMultiNumericUnitTest, MeasureIsAPropertyChildSavedByItsKey)
{
    ResultMultiNumericUnit unit("U", LocalString::Empty(), LocalString::Empty(), nullptr, Measures::Ohm());
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
        EXPECT_EQ(read.getMeasureData()->getMeasureValue(), Measures::Ohm());
        EXPECT_EQ(read.size(), 1u) << "the saved property is read into the unit's own";
        EXPECT_TRUE(problems.empty());
    }
}

TEST(ResultMultiNumericUnitTest, ReportWithSettingCarriesSettingDeviationsAndMeasure)
{
    const LanguageGuard english(0);
    auto result = rejectedResult();
    result->_items.emplace("Ic", ResultNumeric());
    const auto unit = makeUnit("U", result, Measures::Ampere());
    xmlpp::Document document;
    xmlpp::Element* const own = report(*unit, document);
    EXPECT_EQ(attribute(own, "DataType"), "ResultMultiNumeric");
    EXPECT_EQ(attribute(own, "Measure"), "A");
    EXPECT_EQ(text(firstChild(own, "Value")), "2");

    const std::vector<xmlpp::Element*> values = children(firstChild(own, "Items"), "Value");
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(attribute(values[0], "Key"), "Ia");
    EXPECT_EQ(attribute(values[0], "State"), "ok");
    EXPECT_EQ(text(values[0]), "2±1");
    EXPECT_EQ(attribute(values[0], "Deviation"), "-1") << "the worse end, 1, is judged";
    EXPECT_EQ(attribute(values[1], "State"), "?not ok");
    EXPECT_EQ(text(values[1]), "5");
    EXPECT_EQ(attribute(values[1], "Deviation"), "+3");
    // Only an item that is still empty carries IsValid, and then it says "false".
    EXPECT_EQ(attribute(values[1], "IsValid"), "<none>");
    EXPECT_EQ(attribute(values[2], "State"), "not tested");
    EXPECT_EQ(attribute(values[2], "IsValid"), "false");
}

TEST(ResultMultiNumericUnitTest, ReportWithoutSettingOrResult)
{
    const LanguageGuard english(0);
    const auto unit = makeUnit("U", std::make_shared<ResultMultiNumeric>(
                                        std::map<std::string, std::vector<std::string>>{{"x", {"abc"}}}, nullptr));
    xmlpp::Document document;
    xmlpp::Element* own = report(*unit, document);
    EXPECT_EQ(attribute(own, "Measure"), "<none>");
    EXPECT_EQ(firstChild(own, "Value"), nullptr);
    xmlpp::Element* const value = firstChild(firstChild(own, "Items"), "Value");
    EXPECT_EQ(attribute(value, "State"), "abc") << "an unreadable number names itself";
    EXPECT_EQ(attribute(value, "Deviation"), "<none>");
    EXPECT_EQ(text(value), "");

    for (const auto& data : {std::shared_ptr<ResultMultiNumeric>(), std::make_shared<ResultMultiNumeric>()}) {
        xmlpp::Document empty;
        own = report(*makeUnit("U", data, Measures::Volt()), empty);
        EXPECT_EQ(attribute(own, "Measure"), "V") << "the parameters do not depend on the result";
        EXPECT_TRUE(children(own, "Items").empty());
        EXPECT_TRUE(children(own, "Value").empty());
    }
}
