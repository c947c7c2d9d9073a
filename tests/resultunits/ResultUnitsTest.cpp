#include "ResultUnitTestSupport.h"
#include "core/common/Nullable.h"
#include "core/common/Point.h"
#include "core/common/TypeHelper.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/MeasureObject.h"
#include "core/tree/Measures.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/ToleranceReduced.h"
#include "results/IResultUnit.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/ResultMultiNumeric.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiString.h"
#include "results/ResultMultiStringUnit.h"
#include "results/ResultUnitBase.h"
#include "results/StringSettingAssessment.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"
#include "results/graph/ResultMultiGraph.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ResultUnitBaseCases {

using namespace ResultUnitTest;
using ZemTree::IResultUnit;
using ZemTree::Node;
using ZemTree::NodeFactory;
using ZemTree::ResultState;
using ZemTree::SerializationMode;

namespace {

// What the three result units have in common, told per unit.
struct Kind {
    std::string className;
    std::string defaultId;
    // Stores a result that is neither Ok nor Empty into the unit's working value.
    std::function<void(Node&)> setFailedResult;
    // A data element that reads as an accepted result, and one that the unit's converter refuses.
    std::string goodElement;
    std::string badElement;
};

template <class Unit> std::string typeName()
{
    return Zem::TypeHelper::getTypeName(typeid(Unit));
}

std::vector<Kind> kinds()
{
    using StringMap = std::map<std::string, std::vector<std::string>>;
    return {
        {typeName<ZemTree::ResultMultiNumericUnit>(), "ResultMultiNumericUnit",
         [](Node& unit) {
             dynamic_cast<ZemTree::ResultMultiNumericUnit&>(unit).setData(
                 std::make_shared<ZemTree::ResultMultiNumeric>(StringMap{{"a", {"1", "x"}}}, nullptr));
         },
         "<ResultMultiNumeric><Items><Item Name=\"a\"><Value>1</Value></Item></Items></ResultMultiNumeric>",
         "<ResultMultiNumeric Assessment=\"Setting\"><Setting>two</Setting><Tolerance>|[-1;1]</Tolerance>"
         "<Items/></ResultMultiNumeric>"},
        {typeName<ZemTree::ResultMultiStringUnit>(), "ResultMultiStringUnit",
         [](Node& unit) {
             dynamic_cast<ZemTree::ResultMultiStringUnit&>(unit).setData(
                 std::make_shared<ZemTree::ResultMultiString>(StringMap{}, nullptr));
         },
         "<ResultMultiString><Items><Item Name=\"a\"><Value>on</Value></Item></Items></ResultMultiString>",
         "<ResultMultiString Assessment=\"Setting\"><Items/></ResultMultiString>"},
        {typeName<ZemTree::ResultMultiGraphUnit>(), "ResultMultiGraphUnit",
         [](Node& unit) {
             // The expected time is 1 s everywhere; 1.5 s at x = 2 is rejected.
             dynamic_cast<ZemTree::ResultMultiGraphUnit&>(unit).setData(std::make_shared<ZemTree::ResultMultiGraph>(
                 std::map<std::string, std::vector<Zem::Point>>{{"c", {{1.0, 1.0}, {2.0, 1.5}}}},
                 std::make_shared<ZemTree::GraphTimeManager>("I", nullptr, nullptr)));
         },
         "<ResultMultiGraph><Manager Type=\"" + typeName<ZemTree::GraphTimeManager>()
             + "\"/><Items><Item Name=\"c\"><Value>1;1</Value></Item></Items></ResultMultiGraph>",
         "<ResultMultiNumeric/>"},
    };
}

} // namespace

// How a test reads and empties its outcome: through IResultUnit, with the value's listeners told.
TEST(ResultUnitBaseTest, FactoryBuildsEveryUnitAndClearResultEmptiesItThroughItsSetter)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.defaultId);
        const std::unique_ptr<Node> node = NodeFactory::create(kind.className);
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(node->getId(), kind.defaultId);
        auto* const unit = dynamic_cast<IResultUnit*>(node.get());
        ASSERT_NE(unit, nullptr);
        EXPECT_EQ(unit->getResultValue(), nullptr) << "a new unit is not tested";

        int valueOutChanges = 0;
        unit->signalValueOutChanged.connect([&valueOutChanges] { ++valueOutChanges; });
        kind.setFailedResult(*node);
        EXPECT_EQ(valueOutChanges, 1);
        ASSERT_NE(unit->getResultValue(), nullptr);
        EXPECT_NE(unit->getResultValue()->getState(), ResultState::Ok);
        EXPECT_NE(unit->getResultValue()->getState(), ResultState::Empty);

        unit->clearResult();
        EXPECT_EQ(unit->getResultValue(), nullptr);
        EXPECT_EQ(valueOutChanges, 2);
        unit->clearResult();
        EXPECT_EQ(valueOutChanges, 2) << "an empty unit stays quiet";
    }
}

// A data element that the converter refuses is reported with the unit's own text; the unit keeps what it read
// before, and the reading of the unit and of the tree goes on.
TEST(ResultUnitBaseTest, ParseErrorIsReportedAndReadingGoesOn)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.defaultId);
        ResultTree tree;
        std::vector<std::string> problems;
        loadFromString(tree.root,
                       treeXml(unitXml("Bad", kind.className, "Formula=\"1+1\"", kind.badElement)
                               + unitXml("Next", kind.className, "", kind.goodElement)),
                       makeMode(SerializationMode::User, &problems));
        const std::string element = kind.badElement.substr(1, kind.badElement.find_first_of(" />") - 1);
        EXPECT_EQ(problems,
                  std::vector<std::string>{"Test/Results/Bad: " + kind.defaultId + " data parse error: the element "
                                           + element + " holds no valid result"});

        auto* const badUnit = tree.find<IResultUnit>("Bad");
        ASSERT_NE(badUnit, nullptr);
        EXPECT_EQ(badUnit->getResultValue(), nullptr);
        EXPECT_NE(saveToString(tree.root, makeMode(SerializationMode::User)).find("Formula=\"1+1\""), std::string::npos)
            << "the formula read before the data stays";

        auto* const next = tree.find<IResultUnit>("Next");
        ASSERT_NE(next, nullptr);
        ASSERT_NE(next->getResultValue(), nullptr);
        EXPECT_EQ(next->getResultValue()->getState(), ResultState::Ok);
    }
}

// Only an element as the first child of Value is a result; anything else means no result, and no problem.
TEST(ResultUnitBaseTest, ValueWithoutLeadingElementHoldsNoResult)
{
    for (const Kind& kind : kinds()) {
        for (const std::string& content : {std::string(), "text" + kind.goodElement, "<!-- c -->" + kind.goodElement}) {
            SCOPED_TRACE(kind.defaultId + ": " + content);
            ResultTree tree;
            kind.setFailedResult(*tree.results->add(NodeFactory::create(kind.className)));
            std::vector<std::string> problems;
            loadFromString(tree.root, treeXml(unitXml(kind.defaultId, kind.className, "", content)),
                           makeMode(SerializationMode::User, &problems));
            EXPECT_TRUE(problems.empty());
            auto* const unit = tree.find<IResultUnit>(kind.defaultId);
            ASSERT_NE(unit, nullptr);
            EXPECT_EQ(unit->getResultValue(), nullptr) << "the loaded null replaces the former result";
        }
    }
}

} // namespace ResultUnitBaseCases

namespace ResultMultiNumericUnitCases {

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

} // namespace ResultMultiNumericUnitCases

namespace ResultMultiStringUnitCases {

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

} // namespace ResultMultiStringUnitCases

namespace ResultMultiGraphUnitCases {

using namespace ResultUnitTest;
using ZemTree::DisplayXmlParameters;
using ZemTree::GraphTimeManager;
using ZemTree::LocalString;
using ZemTree::Measures;
using ZemTree::ResultMultiGraph;
using ZemTree::ResultMultiGraphUnit;
using ZemTree::ResultState;
using ZemTree::SerializationMode;

namespace {

namespace fs = std::filesystem;
using Curves = std::map<std::string, std::vector<Zem::Point>>;

// The expected time is 1 s at every current and the tolerance is zero: (1, 1) passes, (2, 1.5) does not.
std::shared_ptr<ResultMultiGraph> rejectedResult()
{
    return std::make_shared<ResultMultiGraph>(Curves{{"phase A", {{1.0, 1.0}, {2.0, 1.5}}}},
                                              std::make_shared<GraphTimeManager>("I", Measures::Ampere(), nullptr));
}

std::unique_ptr<ResultMultiGraphUnit> makeUnit(const std::string& id, std::shared_ptr<ResultMultiGraph> data = nullptr)
{
    auto unit =
        std::make_unique<ResultMultiGraphUnit>(id, LocalString("Characteristic"), LocalString::Empty(), nullptr);
    if (data)
        unit->setData(data);
    return unit;
}

xmlpp::Element* report(const ResultMultiGraphUnit& unit, DisplayXmlParameters& parameters, xmlpp::Element* root)
{
    unit.getDisplayXml(parameters, root);
    return children(root, ZemTree::Node::XmlElementName).back();
}

bool isPng(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string head((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return head.size() > 8 && head.compare(0, 8, "\x89PNG\r\n\x1a\n") == 0;
}

} // namespace

TEST(ResultMultiGraphUnitTest, ProjectSaveLoadSaveKeepsResultsAndVisualSwitches)
{
    ResultTree tree;
    tree.addUnit(makeUnit("Rejected", rejectedResult()))->getVisual().setIsGraphVisible(false);
    tree.addUnit(makeUnit("NoManager", std::make_shared<ResultMultiGraph>(Curves{{"c", {{0.5, 0.25}}}}, nullptr)))
        ->getVisual()
        .setIsTableVisible(false);
    tree.addUnit(makeUnit("Untested"));

    const auto loadedTree = projectRoundTrip(tree);
    const ResultTree& loaded = *loadedTree;

    const auto* const rejected = loaded.find<ResultMultiGraphUnit>("Rejected");
    ASSERT_NE(rejected, nullptr);
    ASSERT_NE(rejected->getValue(), nullptr);
    EXPECT_EQ(rejected->getValue()->getState(), ResultState::NotOk) << "the verdict comes from the manager read back";
    EXPECT_FALSE(rejected->getVisual().getIsGraphVisible());
    EXPECT_TRUE(rejected->getVisual().getIsTableVisible());

    const auto* const unknown = loaded.find<ResultMultiGraphUnit>("NoManager");
    ASSERT_NE(unknown, nullptr);
    ASSERT_NE(unknown->getValue(), nullptr);
    EXPECT_EQ(unknown->getValue()->getState(), ResultState::Error);
    EXPECT_FALSE(unknown->getVisual().getIsTableVisible());

    const auto* const untested = loaded.find<ResultMultiGraphUnit>("Untested");
    ASSERT_NE(untested, nullptr);
    EXPECT_EQ(untested->getValue(), nullptr);
}

// The switches belong to a project: a template neither writes nor reads them, and a project without them keeps
// what the unit had.
TEST(ResultMultiGraphUnitTest, VisualIsSavedAndReadWithProjectsOnly)
{
    const struct {
        const char* text;
        std::uint8_t kind;
        const char* visual;
        bool graphVisibleAfter;
    } rows[] = {
        // Only the three words of "off" switch a flag off; every other text, and absence, switches it on.
        {"project, 0", SerializationMode::User, "<Visual IsGraphVisible=\"0\"/>", false},
        {"project, false", SerializationMode::User, "<Visual IsGraphVisible=\"false\"/>", false},
        {"project, False", SerializationMode::User, "<Visual IsGraphVisible=\"False\"/>", false},
        {"project, FALSE shows", SerializationMode::User, "<Visual IsGraphVisible=\"FALSE\"/>", true},
        {"project, leading space shows", SerializationMode::User, "<Visual IsGraphVisible=\" false\"/>", true},
        {"project, bare element shows", SerializationMode::User, "<Visual/>", true},
        {"project without Visual", SerializationMode::User, "", false},
        {"template", SerializationMode::System, "<Visual IsGraphVisible=\"true\"/>", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        ResultMultiGraphUnit unit;
        unit.getVisual().setIsGraphVisible(false);
        int signals = 0;
        unit.getVisual().signalIsGraphVisibleChanged.connect([&signals] { ++signals; });
        loadFromString(unit,
                       "<Root><Node Id=\"ResultMultiGraphUnit\"><Value/>" + std::string(row.visual) + "</Node></Root>",
                       makeMode(row.kind));
        EXPECT_EQ(unit.getVisual().getIsGraphVisible(), row.graphVisibleAfter);
        EXPECT_EQ(signals, 0) << "reading sets the switches quietly";

        xmlpp::Document document;
        xmlpp::Element* const own = unit.getXml(document.create_root_node("Root"), makeMode(row.kind));
        const std::vector<xmlpp::Element*> visual = children(own, "Visual");
        ASSERT_EQ(visual.size(), row.kind == SerializationMode::User ? 1u : 0u);
        if (!visual.empty()) {
            EXPECT_EQ(attribute(visual[0], "IsGraphVisible"), row.graphVisibleAfter ? "<none>" : "false");
        }
    }
}

TEST(ResultMultiGraphUnitTest, ReportOfASettingManagerCarriesSettingsAndDeviations)
{
    const LanguageGuard english(0);
    const TempFolder folder;
    DisplayXmlParameters parameters(folder.path().string());
    const auto unit = makeUnit("U", rejectedResult());
    xmlpp::Document document;
    xmlpp::Element* const own = report(*unit, parameters, document.create_root_node("Report"));
    EXPECT_EQ(attribute(own, "DataType"), "ResultMultiGraph");

    const std::vector<xmlpp::Element*> items = children(firstChild(own, "Items"), "Value");
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(attribute(items[0], "Key"), "phase A");
    EXPECT_EQ(attribute(items[0], "State"), "?not ok");
    xmlpp::Element* const table = firstChild(items[0], "Table");
    EXPECT_EQ(attribute(table, "MeasureX"), "A");
    EXPECT_EQ(attribute(table, "DescriptionY"), "T");
    const std::vector<xmlpp::Element*> records = children(table, "Result");
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(attribute(records[0], "State"), "ok");
    EXPECT_EQ(attribute(records[1], "XSet"), "2");
    EXPECT_EQ(attribute(records[1], "YSet"), "1");
    EXPECT_EQ(attribute(records[1], "YMeasurment"), "1.5");
    EXPECT_EQ(attribute(records[1], "YDeviation"), "+50 % / +0.5");
    EXPECT_EQ(attribute(records[1], "State"), "?not ok");
}

// A record judged without a setting, as in the impedance plane, has no YSet and no YDeviation; a curve without
// points is still empty and the only one to carry IsValid.
TEST(ResultMultiGraphUnitTest, ReportOfAFixedVerdictManagerAndOfAnEmptyCurve)
{
    const LanguageGuard english(0);
    const TempFolder folder;
    DisplayXmlParameters parameters(folder.path().string());
    // Empty polygons reject every point.
    const auto unit = makeUnit("U", std::make_shared<ResultMultiGraph>(Curves{{"a", {}}, {"b", {{1e-14, 2.0}}}},
                                                                       std::make_shared<ZemTree::GraphZPhiManager>()));
    ASSERT_EQ(unit->getValue()->getState(), ResultState::Error) << "a curve without points fails the whole";
    xmlpp::Document document;
    xmlpp::Element* const own = report(*unit, parameters, document.create_root_node("Report"));

    const std::vector<xmlpp::Element*> items = children(firstChild(own, "Items"), "Value");
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(attribute(items[0], "State"), "not tested");
    EXPECT_EQ(attribute(items[0], "IsValid"), "false");
    EXPECT_TRUE(children(items[0], "Table").empty());
    EXPECT_EQ(attribute(items[1], "IsValid"), "<none>");

    const std::vector<xmlpp::Element*> tables = children(items[1], "Table");
    ASSERT_EQ(tables.size(), 2u);
    xmlpp::Element* const record = firstChild(tables[1], "Result");
    EXPECT_EQ(attribute(record, "XSet"), "0") << "a tiny argument reads as zero";
    EXPECT_EQ(attribute(record, "YMeasurment"), "2");
    EXPECT_EQ(attribute(record, "YSet"), "<none>");
    EXPECT_EQ(attribute(record, "YDeviation"), "<none>");
    EXPECT_EQ(attribute(record, "State"), "?not ok");
}

// The picture goes into the report's image folder and the report names it by its bare file name, whatever the
// visual switches say; each graph gets its own picture. Without a manager or a result there is none.
TEST(ResultMultiGraphUnitTest, ReportWritesOnePicturePerGraph)
{
    const TempFolder folder;
    DisplayXmlParameters parameters(folder.path().string());
    xmlpp::Document document;
    xmlpp::Element* const root = document.create_root_node("Report");
    const auto hidden = makeUnit("First", rejectedResult());
    hidden->getVisual().setIsGraphVisible(false);
    hidden->getVisual().setIsTableVisible(false);
    const auto none = makeUnit("None", std::make_shared<ResultMultiGraph>(Curves{{"c", {{1.0, 1.0}}}}, nullptr));
    EXPECT_EQ(attribute(report(*none, parameters, root), "Graph"), "<none>");
    EXPECT_EQ(attribute(report(*makeUnit("Untested"), parameters, root), "Graph"), "<none>");
    EXPECT_FALSE(fs::exists(parameters.getImageFolder())) << "no picture, not even its folder";

    const std::string first = attribute(report(*hidden, parameters, root), "Graph");
    const std::string second = attribute(report(*makeUnit("Second", rejectedResult()), parameters, root), "Graph");
    EXPECT_NE(first, second);
    for (const std::string& name : {first, second}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(fs::path(name).filename().string(), name) << "a bare file name";
        EXPECT_TRUE(isPng(fs::path(parameters.getImageFolder()) / name));
    }
}

} // namespace ResultMultiGraphUnitCases
