#include "results/ResultMultiStringUnit.h"

#include "ResultUnitTestSupport.h"
#include "core/tree/DisplayXmlParameters.h"
#include "results/ResultMultiString.h"
#include "results/StringSettingAssessment.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace ResultUnitTest;
using ZemTree::DisplayXmlParameters;
using ZemTree::LocalString;
using ZemTree::ResultMultiString;
using ZemTree::ResultMultiStringUnit;
using ZemTree::ResultState;
using ZemTree::ResultString;
using ZemTree::StringSettingAssessment;

namespace {

// Valid text "on": "K1" reads "on" twice (Ok), "K2" reads "on" and then "off" (rejected, shown as "off").
std::shared_ptr<ResultMultiString> rejectedResult()
{
    return std::make_shared<ResultMultiString>(
        std::map<std::string, std::vector<std::string>>{{"K1", {"on", "on"}}, {"K2", {"on", "off"}}},
        std::make_shared<StringSettingAssessment>("on"));
}

std::unique_ptr<ResultMultiStringUnit> makeUnit(const std::string& id)
{
    return std::make_unique<ResultMultiStringUnit>(id, LocalString("Contacts"), LocalString("K"), nullptr);
}

xmlpp::Element* report(const ResultMultiStringUnit& unit, xmlpp::Element* root)
{
    DisplayXmlParameters parameters("/nonexistent");
    unit.getDisplayXml(parameters, root);
    return firstChild(root, ZemTree::Node::XmlElementName);
}

} // namespace

TEST(ResultMultiStringUnitTest, ProjectSaveLoadSaveKeepsResults)
{
    ResultTree tree;
    tree.addUnit(makeUnit("Rejected"))->setData(rejectedResult());
    tree.addUnit(makeUnit("Reference"))
        ->setData(std::make_shared<ResultMultiString>(
            std::map<std::string, std::vector<std::string>>{{"Name", {"REL-511 <v2> & \"x\""}}}, nullptr));
    const auto loaded = projectRoundTrip(tree);

    const auto* const rejected = loaded->find<ResultMultiStringUnit>("Rejected");
    ASSERT_NE(rejected, nullptr);
    ASSERT_NE(rejected->getValue(), nullptr);
    EXPECT_EQ(rejected->getValue()->getState(), ResultState::NotOk);
    EXPECT_EQ(rejected->getValue()->_items.at("K2").getMeasurment(), "off");
    const auto* const reference = loaded->find<ResultMultiStringUnit>("Reference");
    ASSERT_NE(reference, nullptr);
    ASSERT_NE(reference->getValue(), nullptr);
    EXPECT_EQ(reference->getValue()->_items.at("Name").getMeasurment(), "REL-511 <v2> & \"x\"");
}

TEST(ResultMultiStringUnitTest, ReportCarriesValidTextAndMeasuredTexts)
{
    const LanguageGuard english(0);
    auto unit = makeUnit("U");
    unit->setData(rejectedResult());
    xmlpp::Document document;
    xmlpp::Element* const own = report(*unit, document.create_root_node("Report"));
    EXPECT_EQ(attribute(own, "DataType"), "ResultMultiString");
    EXPECT_EQ(attribute(own, "Measure"), "<none>");
    EXPECT_EQ(text(firstChild(own, "Value")), "on");
    const std::vector<xmlpp::Element*> values = children(firstChild(own, "Items"), "Value");
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(attribute(values[0], "State"), "ok");
    EXPECT_EQ(text(values[0]), "on");
    EXPECT_EQ(attribute(values[1], "Key"), "K2");
    EXPECT_EQ(attribute(values[1], "State"), "?not ok");
    EXPECT_EQ(text(values[1]), "off");
}

TEST(ResultMultiStringUnitTest, ReportWithoutSettingAndWithAnEmptyItem)
{
    const LanguageGuard russian(1);
    auto result =
        std::make_shared<ResultMultiString>(std::map<std::string, std::vector<std::string>>{{"a", {"x"}}}, nullptr);
    result->_items.emplace("b", ResultString());
    auto unit = makeUnit("U");
    unit->setData(result);
    xmlpp::Document document;
    xmlpp::Element* const own = report(*unit, document.create_root_node("Report"));
    EXPECT_EQ(firstChild(own, "Value"), nullptr);
    const std::vector<xmlpp::Element*> values = children(firstChild(own, "Items"), "Value");
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(attribute(values[0], "State"), "норма") << "a report speaks the current language";
    EXPECT_EQ(attribute(values[0], "IsValid"), "<none>");
    EXPECT_EQ(attribute(values[1], "IsValid"), "false");
}
