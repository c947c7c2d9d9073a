#include "results/ResultMultiGraphUnit.h"

#include "ResultUnitTestSupport.h"
#include "core/common/Figure.h"
#include "core/common/Point.h"
#include "core/common/XmlInclude.h"
#include "core/tree/DisplayXmlParameters.h"
#include "core/tree/Measures.h"
#include "results/NumericFixedAssessment.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/IGraphManager.h"
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

// Judges each point by itself, without a setting, as a zone manager does: y >= 0 passes. It draws nothing and
// remembers the curves it was asked to draw.
class VerdictManager : public ZemTree::IGraphManager {
public:
    void getFigures(const Curves& points, std::map<std::string, std::unique_ptr<Zem::Figure>>& /*figures*/,
                    std::shared_ptr<ZemTree::GraphDataHeader>& header) override
    {
        drawn = points;
        header = _header();
    }
    std::vector<std::shared_ptr<ZemTree::GraphDataTable>> getDataTables(const std::vector<Zem::Point>& points) override
    {
        auto table = std::make_shared<ZemTree::GraphDataTable>(_header());
        for (const Zem::Point& point : points)
            table->_records.push_back(std::make_shared<ZemTree::GraphDataRecord>(
                point.x, point.y, std::make_shared<ZemTree::NumericFixedAssessment>(point.y >= 0.0)));
        return {table};
    }
    void getXmlData(xmlpp::Element* /*element*/) override {}
    void setXmlData(const xmlpp::Element* /*element*/) override {}

    Curves drawn;

private:
    static std::shared_ptr<ZemTree::GraphDataHeader> _header()
    {
        return std::make_shared<ZemTree::GraphDataHeader>("zone", "R", Measures::Ohm(), "X", nullptr);
    }
};

// The expected time is 1 s at every current and the tolerance is zero: (1, 1) passes, (2, 1.5) does not.
std::shared_ptr<GraphTimeManager> timeManager()
{
    return std::make_shared<GraphTimeManager>("I", Measures::Ampere(), nullptr);
}

std::shared_ptr<ResultMultiGraph> rejectedResult()
{
    return std::make_shared<ResultMultiGraph>(Curves{{"phase A", {{1.0, 1.0}, {2.0, 1.5}}}}, timeManager());
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
    ResultMultiGraphUnit* const rejected = tree.addUnit(makeUnit("Rejected", rejectedResult()));
    rejected->getVisual().setIsGraphVisible(false);
    ResultMultiGraphUnit* const unknown =
        tree.addUnit(makeUnit("NoManager", std::make_shared<ResultMultiGraph>(Curves{{"c", {{0.5, 0.25}}}}, nullptr)));
    unknown->getVisual().setIsTableVisible(false);
    tree.addUnit(makeUnit("Untested"));

    std::vector<std::string> problems;
    const std::string first = saveToString(tree.root, makeMode(SerializationMode::User, &problems));
    ResultTree loaded;
    loadFromString(loaded.root, first, makeMode(SerializationMode::User, &problems));
    EXPECT_EQ(saveToString(loaded.root, makeMode(SerializationMode::User, &problems)), first);
    EXPECT_TRUE(problems.empty());

    const auto* const readRejected = loaded.find<ResultMultiGraphUnit>("Rejected");
    ASSERT_NE(readRejected, nullptr);
    const std::shared_ptr<ResultMultiGraph>& result = readRejected->getValue();
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->getState(), ResultState::NotOk) << "the verdict comes from the manager read back";
    ASSERT_NE(dynamic_cast<GraphTimeManager*>(result->getManager()), nullptr);
    ASSERT_EQ(result->_items.count("phase A"), 1u);
    EXPECT_EQ(result->_items.at("phase A").getPointCollection().size(), 2u);
    EXPECT_FALSE(readRejected->getVisual().getIsGraphVisible());
    EXPECT_TRUE(readRejected->getVisual().getIsTableVisible());

    const auto* const readUnknown = loaded.find<ResultMultiGraphUnit>("NoManager");
    ASSERT_NE(readUnknown, nullptr);
    ASSERT_NE(readUnknown->getValue(), nullptr);
    EXPECT_EQ(readUnknown->getValue()->getState(), ResultState::Error);
    EXPECT_TRUE(readUnknown->getVisual().getIsGraphVisible());
    EXPECT_FALSE(readUnknown->getVisual().getIsTableVisible());

    const auto* const untested = loaded.find<ResultMultiGraphUnit>("Untested");
    ASSERT_NE(untested, nullptr);
    EXPECT_EQ(untested->getValue(), nullptr);
}

// The switches belong to a project: a template neither writes nor reads them, and a project without them keeps
// what the unit had.
TEST(ResultMultiGraphUnitTest, VisualIsSavedAndReadWithProjectsOnly)
{
    struct Row {
        const char* text;
        std::uint8_t kind;
        const char* visual;
        bool graphVisibleAfter;
    };
    const Row rows[] = {
        {"project", SerializationMode::User, "<Visual IsGraphVisible=\"0\"/>", false},
        {"project, unknown word shows", SerializationMode::User, "<Visual IsGraphVisible=\"no\"/>", true},
        {"project, bare element shows", SerializationMode::User, "<Visual/>", true},
        {"project without Visual", SerializationMode::User, "", false},
        {"template", SerializationMode::System, "<Visual IsGraphVisible=\"true\"/>", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ResultMultiGraphUnit unit;
        unit.getVisual().setIsGraphVisible(false);
        int signals = 0;
        unit.getVisual().signalIsGraphVisibleChanged.connect([&signals] { ++signals; });
        loadFromString(unit,
                       "<Root><Node Id=\"ResultMultiGraphUnit\"><Value/>" + std::string(row.visual) + "</Node></Root>",
                       makeMode(row.kind));
        EXPECT_EQ(unit.getVisual().getIsGraphVisible(), row.graphVisibleAfter);
        EXPECT_TRUE(unit.getVisual().getIsTableVisible());
        EXPECT_EQ(signals, 0) << "reading sets the switches quietly";

        xmlpp::Document document;
        xmlpp::Element* const own = unit.getXml(document.create_root_node("Root"), makeMode(row.kind));
        const std::vector<xmlpp::Element*> visual = children(own, "Visual");
        if (row.kind == SerializationMode::User) {
            ASSERT_EQ(visual.size(), 1u);
            EXPECT_EQ(attribute(visual[0], "IsGraphVisible"), row.graphVisibleAfter ? "<none>" : "false");
        }
        else {
            EXPECT_TRUE(visual.empty());
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
    EXPECT_EQ(attributeNames(items[0]), (std::vector<std::string>{"Key", "State"}));
    EXPECT_EQ(attribute(items[0], "Key"), "phase A");
    EXPECT_EQ(attribute(items[0], "State"), "?not ok");

    const std::vector<xmlpp::Element*> tables = children(items[0], "Table");
    ASSERT_EQ(tables.size(), 1u);
    EXPECT_EQ(attribute(tables[0], "DescriptionX"), "I");
    EXPECT_EQ(attribute(tables[0], "MeasureX"), "A");
    EXPECT_EQ(attribute(tables[0], "DescriptionY"), "T");
    EXPECT_EQ(attribute(tables[0], "MeasureY"), "s");

    const std::vector<xmlpp::Element*> records = children(tables[0], "Result");
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(attributeNames(records[1]),
              (std::vector<std::string>{"XSet", "YSet", "YMeasurment", "YDeviation", "State"}));
    EXPECT_EQ(attribute(records[0], "XSet"), "1");
    EXPECT_EQ(attribute(records[0], "YSet"), "1");
    EXPECT_EQ(attribute(records[0], "YMeasurment"), "1");
    EXPECT_EQ(attribute(records[0], "State"), "ok");
    EXPECT_EQ(attribute(records[1], "XSet"), "2");
    EXPECT_EQ(attribute(records[1], "YSet"), "1");
    EXPECT_EQ(attribute(records[1], "YMeasurment"), "1.5");
    EXPECT_EQ(attribute(records[1], "YDeviation"), "+50 % / +0.5");
    EXPECT_EQ(attribute(records[1], "State"), "?not ok");
}

// A record judged without a setting has no YSet and no YDeviation; a curve without points is still empty and
// the only one to carry IsValid.
TEST(ResultMultiGraphUnitTest, ReportOfAFixedVerdictManagerAndOfAnEmptyCurve)
{
    const LanguageGuard english(0);
    const TempFolder folder;
    DisplayXmlParameters parameters(folder.path().string());
    auto manager = std::make_shared<VerdictManager>();
    const auto unit = makeUnit(
        "U", std::make_shared<ResultMultiGraph>(Curves{{"a", {}}, {"b", {{0.5, -1.0}, {1e-14, 2.0}}}}, manager));
    ASSERT_EQ(unit->getValue()->getState(), ResultState::Error) << "a curve without points fails the whole";
    xmlpp::Document document;
    xmlpp::Element* const own = report(*unit, parameters, document.create_root_node("Report"));

    const std::vector<xmlpp::Element*> items = children(firstChild(own, "Items"), "Value");
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(attribute(items[0], "State"), "not tested");
    EXPECT_EQ(attribute(items[0], "IsValid"), "false");
    EXPECT_TRUE(children(items[0], "Table").empty());
    EXPECT_EQ(attribute(items[1], "State"), "?not ok");
    EXPECT_EQ(attribute(items[1], "IsValid"), "<none>");

    const std::vector<xmlpp::Element*> tables = children(items[1], "Table");
    ASSERT_EQ(tables.size(), 1u);
    EXPECT_EQ(attribute(tables[0], "MeasureX"), "Ohm");
    EXPECT_EQ(attribute(tables[0], "MeasureY"), "") << "a header without a measure gives an empty text";
    const std::vector<xmlpp::Element*> records = children(tables[0], "Result");
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(attributeNames(records[0]), (std::vector<std::string>{"XSet", "YMeasurment", "State"}));
    EXPECT_EQ(attribute(records[0], "State"), "?not ok");
    EXPECT_EQ(attribute(records[1], "XSet"), "0") << "a tiny argument reads as zero";
    EXPECT_EQ(attribute(records[1], "YMeasurment"), "2");
    EXPECT_EQ(attribute(records[1], "State"), "ok");

    EXPECT_EQ(manager->drawn, (Curves{{"a", {}}, {"b", {{0.5, -1.0}, {1e-14, 2.0}}}}))
        << "one picture holds every curve";
}

// The picture goes into the report's image folder and the report names it by its bare file name, whatever the
// visual switches say; each graph gets its own picture.
TEST(ResultMultiGraphUnitTest, ReportWritesOnePicturePerGraph)
{
    const TempFolder folder;
    DisplayXmlParameters parameters(folder.path().string());
    ResultTree tree;
    ResultMultiGraphUnit* const first = tree.addUnit(makeUnit("First", rejectedResult()));
    first->getVisual().setIsGraphVisible(false);
    first->getVisual().setIsTableVisible(false);
    tree.addUnit(makeUnit("Second", rejectedResult()));

    xmlpp::Document document;
    tree.root.getDisplayXml(parameters, document.create_root_node("Report"));
    const fs::path images = parameters.getImageFolder();
    std::vector<std::string> names;
    for (const char* id : {"First", "Second"}) {
        SCOPED_TRACE(id);
        const std::vector<xmlpp::Element*> units =
            children(children(children(document.get_root_node(), "Node")[0], "Node")[0], "Node");
        xmlpp::Element* own = nullptr;
        for (xmlpp::Element* unit : units) {
            if (attribute(unit, "Id") == id)
                own = unit;
        }
        ASSERT_NE(own, nullptr);
        EXPECT_NE(firstChild(own, "Items"), nullptr);
        const std::string name = attribute(own, "Graph");
        EXPECT_EQ(fs::path(name).filename().string(), name) << "a bare file name";
        EXPECT_TRUE(isPng(images / name)) << (images / name);
        names.push_back(name);
    }
    EXPECT_NE(names[0], names[1]);
}

TEST(ResultMultiGraphUnitTest, ReportWithoutManagerOrResultHasNoPicture)
{
    struct Row {
        const char* text;
        std::shared_ptr<ResultMultiGraph> data;
        bool hasItems;
    };
    const Row rows[] = {
        {"no manager", std::make_shared<ResultMultiGraph>(Curves{{"c", {{1.0, 1.0}}}}, nullptr), true},
        {"no result", nullptr, false},
        {"empty result", std::make_shared<ResultMultiGraph>(), false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const TempFolder folder;
        DisplayXmlParameters parameters(folder.path().string());
        const auto unit = makeUnit("U", row.data);
        xmlpp::Document document;
        xmlpp::Element* const own = report(*unit, parameters, document.create_root_node("Report"));
        EXPECT_EQ(firstChild(own, "Items") != nullptr, row.hasItems);
        EXPECT_EQ(attribute(own, "Graph"), "<none>");
        EXPECT_FALSE(fs::exists(parameters.getImageFolder())) << "no picture, not even its folder";
    }
}
