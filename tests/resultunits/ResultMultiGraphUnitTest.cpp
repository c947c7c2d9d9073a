#include "results/ResultMultiGraphUnit.h"

#include "ResultUnitTestSupport.h"
#include "core/common/Point.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/Measures.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"
#include "results/graph/ResultMultiGraph.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

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
