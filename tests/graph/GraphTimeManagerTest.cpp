#include "results/graph/GraphTimeManager.h"

#include "GraphTestHelper.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/PointsSequence.h"
#include "core/tree/Deviation.h"
#include "core/tree/MeasureTypeConverter.h"
#include "core/tree/Measures.h"
#include "core/tree/Tolerance.h"
#include "localisation/TreeRelay.h"
#include "results/NumericSettingAssessment.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/ResultGraph.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Zem::Point;
using Zem::PointF;
using ZemTree::GraphDataRecord;
using ZemTree::GraphTimeManager;
using ZemTree::ResultState;
using Figures = std::map<std::string, std::unique_ptr<Zem::Figure>>;

const char* const KeyUp = "Форма характеристики снизу";
const char* const KeyDown = "Форма характеристики сверху";

std::shared_ptr<ZemTree::Tolerance> toleranceOf(const std::string& text)
{
    std::shared_ptr<ZemTree::Tolerance> tolerance;
    EXPECT_TRUE((Zem::tryConvert<std::shared_ptr<ZemTree::Tolerance>, true, true>(text, tolerance))) << text;
    return tolerance;
}

double settingOf(const GraphDataRecord& record)
{
    const auto* assessment = dynamic_cast<const ZemTree::NumericSettingAssessment*>(record.getResult().getAssessment());
    EXPECT_NE(assessment, nullptr);
    return assessment == nullptr ? 0.0 : assessment->getSetting();
}

std::vector<std::shared_ptr<GraphDataRecord>> recordsOf(GraphTimeManager& manager, const std::vector<Point>& points)
{
    const auto tables = manager.getDataTables(points);
    EXPECT_EQ(tables.size(), 1u);
    return tables.empty() ? std::vector<std::shared_ptr<GraphDataRecord>>() : tables.front()->_records;
}

struct Characteristic {
    const char* name;
    const char* formula;
    std::function<double(double m, double t)> expected; // m = x / I
};

// The standard inverse-time characteristics, computed here without the formula language.
const std::vector<Characteristic>& characteristics()
{
    static const std::vector<Characteristic> rows{
        {"standard inverse", "{T}*0.14/(({x}/{I})^0.02-1)",
         [](double m, double t) { return t * 0.14 / (std::pow(m, 0.02) - 1.0); }},
        {"very inverse", "{T}*13.5/({x}/{I}-1)", [](double m, double t) { return t * 13.5 / (m - 1.0); }},
        {"extremely inverse", "{T}*80/(({x}/{I})^2-1)",
         [](double m, double t) { return t * 80.0 / (std::pow(m, 2.0) - 1.0); }},
    };
    return rows;
}

TEST(GraphTimeManagerTest, CalculateTimeFollowsTheInverseTimeCharacteristics)
{
    const double iOperate = 1.5;
    for (const Characteristic& row : characteristics()) {
        for (const double multiple : {1.1, 2.0, 5.0, 10.0, 20.0}) {
            for (const double tOperate : {0.05, 0.3, 1.0, 1.6}) {
                SCOPED_TRACE(std::string(row.name) + " at " + std::to_string(multiple) + " x I, T "
                             + std::to_string(tOperate));
                const double x = multiple * iOperate;
                const double expected = row.expected(x / iOperate, tOperate);
                const double time = GraphTimeManager::CalculateTime(row.formula, iOperate, tOperate, x);
                EXPECT_NEAR(time, expected, std::fabs(expected) * 1e-9);
            }
        }
    }
}

TEST(GraphTimeManagerTest, CalculateTimeTable)
{
    struct Row {
        const char* formula;
        double iOperate, tOperate, x;
        double expected; // NaN: not a number
    };
    const double nan = std::nan("");
    const Row rows[] = {
        {"{T}/({x}/{I}-1)", 2.0, 1.0, 4.0, 1.0},
        {"{T}", 7.0, 2.5, 100.0, 2.5},
        // Every placeholder is replaced, however often it stands.
        {"{x}+{x}*{T}-{I}", 1.0, 3.0, 2.0, 7.0},
        // A negative number stands behind an operator as a sign.
        {"{T}-{x}", 1.0, 1.0, -2.0, 3.0},
        {"{x}*{I}", -0.25, 1.0, -4.0, 1.0},
        // Below 1e-13 a number is written as "0".
        {"{x}+1", 1.0, 1.0, 1e-14, 1.0},
        {"{T}*1e3", 1.0, 2.0, 0.0, 2000.0},
        // A text result counts when it reads as a number.
        {"\"2.5\"", 1.0, 1.0, 1.0, 2.5},
        {"\"abc\"", 1.0, 1.0, 1.0, nan},
        {"{T}*foo({x})", 1.0, 1.0, 2.0, nan},
        {"unknownWord", 1.0, 1.0, 2.0, nan},
        {"{T}*(", 1.0, 1.0, 2.0, nan},
        {"", 1.0, 1.0, 2.0, nan},
        // A placeholder that is not one of the three stays a reference, which nothing resolves.
        {"{y}", 1.0, 1.0, 2.0, nan},
        {"{x}", 1.0, 1.0, nan, nan},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.formula);
        const double time = GraphTimeManager::CalculateTime(row.formula, row.iOperate, row.tOperate, row.x);
        if (std::isnan(row.expected))
            EXPECT_TRUE(std::isnan(time)) << time;
        else
            EXPECT_NEAR(time, row.expected, 1e-12);
    }
}

TEST(GraphTimeManagerTest, DefaultManagerExpectsTheOperatingTimeEverywhere)
{
    GraphTimeManager manager("I", ZemTree::Measures::Ampere(), nullptr);
    const auto records = recordsOf(manager, {{2.0, 1.0}, {3.0, 1.5}});
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(settingOf(*records[0]), 1.0);
    EXPECT_EQ(settingOf(*records[1]), 1.0);
    // Without a tolerance only the setting itself passes.
    EXPECT_EQ(records[0]->getResult().getState(), ResultState::Ok);
    EXPECT_EQ(records[1]->getResult().getState(), ResultState::NotOk);
    EXPECT_EQ(records[0]->getValue(), 2.0);
    EXPECT_EQ(records[1]->getValue(), 3.0);
    EXPECT_EQ(records[1]->getResult().getMeasurment(), 1.5);

    auto shared = std::make_shared<GraphTimeManager>("I", ZemTree::Measures::Ampere(), nullptr);
    EXPECT_EQ(ZemTree::ResultGraph({{2.0, 1.0}, {3.0, 1.5}}, shared).getState(), ResultState::NotOk);
    EXPECT_EQ(ZemTree::ResultGraph({{2.0, 1.0}}, shared).getState(), ResultState::Ok);
}

TEST(GraphTimeManagerTest, PointsAreJudgedAgainstTheCharacteristicWithTheTolerance)
{
    auto manager = std::make_shared<GraphTimeManager>("I", ZemTree::Measures::Ampere(), toleranceOf("[0;inf]:[-5;5]|"));
    manager->setFormula("{T}*13.5/({x}/{I}-1)");
    manager->setIOperate(2.0);
    manager->setTOperate(0.5);
    struct Row {
        double x;
        double factor; // measured time = expected * factor
        ResultState state;
        double relative;
    };
    const Row rows[] = {
        {4.0, 1.0, ResultState::Ok, 0.0},      {6.0, 1.03, ResultState::Ok, 3.0},
        {10.0, 0.96, ResultState::Ok, -4.0},   {20.0, 1.1, ResultState::NotOk, 10.0},
        {3.0, 0.9, ResultState::NotOk, -10.0},
    };
    std::vector<Point> points;
    for (const Row& row : rows)
        points.emplace_back(row.x, 0.5 * 13.5 / (row.x / 2.0 - 1.0) * row.factor);
    const auto records = recordsOf(*manager, points);
    ASSERT_EQ(records.size(), std::size(rows));
    for (std::size_t i = 0; i < records.size(); ++i) {
        SCOPED_TRACE(rows[i].x);
        const auto& result = records[i]->getResult();
        EXPECT_NEAR(settingOf(*records[i]), 0.5 * 13.5 / (rows[i].x / 2.0 - 1.0), 1e-12);
        EXPECT_EQ(result.getState(), rows[i].state);
        ASSERT_TRUE(result.getDeviation().relative().hasValue());
        EXPECT_NEAR(result.getDeviation().relative().getValue(), rows[i].relative, 0.011);
        // The tolerance has no absolute range, so no absolute deviation is reported.
        EXPECT_FALSE(result.getDeviation().absolute().hasValue());
    }
    EXPECT_EQ(ZemTree::ResultGraph(points, manager).getState(), ResultState::NotOk);
}

// The tolerance is reduced at the point's argument, not at the expected time.
TEST(GraphTimeManagerTest, ToleranceIsReducedAtTheArgument)
{
    GraphTimeManager manager("I", nullptr, toleranceOf("[0;5]:[-1;1]| [5;inf]:[-20;20]|"));
    manager.setFormula("{T}");
    manager.setTOperate(10.0);
    // Both measured times lie 10 % above the setting; the expected time (10) would select the wide item for both.
    const auto records = recordsOf(manager, {{2.0, 11.0}, {8.0, 11.0}});
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0]->getResult().getState(), ResultState::NotOk);
    EXPECT_EQ(records[1]->getResult().getState(), ResultState::Ok);
}

TEST(GraphTimeManagerTest, FormulaThatDoesNotEvaluateFailsEveryPointQuietly)
{
    GraphTimeManager manager("I", nullptr, toleranceOf("[-inf;inf]:[-50;50]|[-100;100]"));
    manager.setFormula("{T}*unknownWord({x})");
    std::vector<std::shared_ptr<GraphDataRecord>> records;
    EXPECT_NO_THROW(records = recordsOf(manager, {{1.0, 1.0}, {2.0, 0.5}, {3.0, std::nan("")}}));
    ASSERT_EQ(records.size(), 3u);
    for (const auto& record : records) {
        SCOPED_TRACE(record->getValue());
        EXPECT_TRUE(std::isnan(settingOf(*record)));
        // A NaN setting rejects the point; the measured data themselves are fine, so it is no Error.
        EXPECT_EQ(record->getResult().getState(), ResultState::NotOk);
    }
}

TEST(GraphTimeManagerTest, TableHeaderNamesTheColumns)
{
    GraphTimeManager manager("Current", ZemTree::Measures::Ampere(), nullptr);
    const auto tables = manager.getDataTables({{1.0, 1.0}});
    ASSERT_EQ(tables.size(), 1u);
    const auto header = tables.front()->getHeader();
    EXPECT_EQ(header->getName(), lng::TreeRelay::get("table"));
    EXPECT_EQ(header->getDescriptionX(), "Current");
    EXPECT_EQ(header->getMeasureX(), ZemTree::Measures::Ampere());
    EXPECT_EQ(header->getDescriptionY(), "T");
    EXPECT_EQ(header->getMeasureY(), ZemTree::Measures::Second());

    // No points: one table without records, which is Error.
    const auto empty = manager.getDataTables({});
    ASSERT_EQ(empty.size(), 1u);
    EXPECT_TRUE(empty.front()->_records.empty());
}

const Zem::PointsSequence& sequenceAt(const Figures& figures, const std::string& key)
{
    const auto found = figures.find(key);
    if (found == figures.end())
        throw std::logic_error("no figure " + key);
    const auto* sequence = dynamic_cast<const Zem::PointsSequence*>(found->second.get());
    if (sequence == nullptr)
        throw std::logic_error("not a sequence: " + key);
    return *sequence;
}

TEST(GraphTimeManagerTest, FiguresHoldTheCurvesAndTheSettingLinesUnderTheirKeys)
{
    GraphTimeManager manager("I", ZemTree::Measures::Ampere(), nullptr);
    std::vector<PointF> up{{1.0f, 2.0f}, {3.0f, 1.0f}};
    std::vector<PointF> down{{1.0f, 1.0f}, {3.0f, 0.5f}, {5.0f, 0.25f}};
    manager.setSettingsFigures(up, Zem::Color::Red(), down, Zem::Color::Green());

    Figures figures;
    std::shared_ptr<ZemTree::GraphDataHeader> header =
        std::make_shared<ZemTree::GraphDataHeader>("old", "", nullptr, "", nullptr);
    manager.getFigures({{"A", {{1.5, 0.1}, {2.0, 0.123456789}}}, {"B", {}}}, figures, header);
    ASSERT_EQ(figures.size(), 4u);
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->getDescriptionY(), "T");
    EXPECT_EQ(header->getMeasureY(), ZemTree::Measures::Second());

    const Zem::PointsSequence& curve = sequenceAt(figures, "A");
    EXPECT_EQ(curve.getPoints(), (std::vector<PointF>{{1.5f, 0.1f}, {2.0f, 0.123456789f}}));
    EXPECT_EQ(curve.getColor(), Zem::Color(0, 0, 255, 255));
    EXPECT_TRUE(curve.getIsMarkersVisible());
    EXPECT_FALSE(curve.getIsLinesVisible());
    EXPECT_TRUE(curve.getName().empty());
    EXPECT_TRUE(sequenceAt(figures, "B").getPoints().empty());

    // The line saved as ZsettingsFiguresUp goes under the key that ends in "снизу".
    const Zem::PointsSequence& lineUp = sequenceAt(figures, KeyUp);
    EXPECT_EQ(lineUp.getPoints(), up);
    EXPECT_EQ(lineUp.getColor(), Zem::Color::Red());
    EXPECT_FALSE(lineUp.getIsMarkersVisible());
    EXPECT_TRUE(lineUp.getIsLinesVisible());
    const Zem::PointsSequence& lineDown = sequenceAt(figures, KeyDown);
    EXPECT_EQ(lineDown.getPoints(), down);
    EXPECT_EQ(lineDown.getColor(), Zem::Color::Green());
    EXPECT_FALSE(lineDown.getIsMarkersVisible());
    EXPECT_TRUE(lineDown.getIsLinesVisible());
}

TEST(GraphTimeManagerTest, FiguresKeepWhatIsAlreadyInTheMap)
{
    GraphTimeManager manager("I", nullptr, nullptr);
    Figures figures;
    figures["A"] =
        std::make_unique<Zem::PointsSequence>(std::vector<PointF>{{9, 9}}, Zem::Color::Gray(), "", false, false);
    std::shared_ptr<ZemTree::GraphDataHeader> header;
    // A curve under a setting line's key is inserted first; the setting line is dropped.
    manager.getFigures({{"A", {{1.0, 1.0}}}, {KeyUp, {{2.0, 2.0}}}}, figures, header);
    ASSERT_EQ(figures.size(), 3u);
    EXPECT_EQ(sequenceAt(figures, "A").getColor(), Zem::Color::Gray());
    const Zem::PointsSequence& taken = sequenceAt(figures, KeyUp);
    EXPECT_EQ(taken.getPoints(), (std::vector<PointF>{{2.0f, 2.0f}}));
    EXPECT_TRUE(taken.getIsMarkersVisible());
    EXPECT_FALSE(taken.getIsLinesVisible());
    // Empty setting lines still give their figure.
    EXPECT_TRUE(sequenceAt(figures, KeyDown).getPoints().empty());
}

TEST(GraphTimeManagerTest, XmlHoldsTheSettingsAndReadsBack)
{
    GraphTimeManager manager("Current", ZemTree::Measures::Ampere(),
                             toleranceOf("[0;10]:[-5;5]| [10;inf]:|[-0.1;0.1]"));
    manager.setFormula("{T}*0.14/(({x}/{I})^0.02-1)");
    manager.setIOperate(1.25);
    manager.setTOperate(0.3);
    std::vector<PointF> up{{1.5f, 2.0f}, {10.0f, 0.25f}};
    std::vector<PointF> down;
    manager.setSettingsFigures(up, Zem::Color::Blue(), down, Zem::Color::Green());

    const std::string xml =
        ZemTreeTest::writtenXml([&](xmlpp::Element* root) { manager.getXmlData(root->add_child("Manager")); });
    EXPECT_EQ(xml, "<Manager Description=\"Current\" Measure=\""
                       + ZemTree::MeasureTypeConverter::toStringData(ZemTree::Measures::Ampere())
                       + "\" Formula=\"{T}*0.14/(({x}/{I})^0.02-1)\" Ioperate=\"1.25\" Toperate=\"0.3\" "
                         "Tolerance=\"[0;10]:[-5;5]| [10;inf]:|[-0.1;0.1]\">"
                         "<ZsettingsFiguresUp>1.5;2;10;0.25;</ZsettingsFiguresUp><ZsettingsFiguresDown/></Manager>");

    ZemTreeTest::ParsedXml parsed(xml);
    GraphTimeManager back;
    back.setXmlData(parsed.root());
    EXPECT_EQ(back.getDescription(), "Current");
    EXPECT_EQ(back.getMeasure(), ZemTree::Measures::Ampere());
    EXPECT_EQ(back.getFormula(), manager.getFormula());
    EXPECT_EQ(back.getIOperate(), 1.25);
    EXPECT_EQ(back.getTOperate(), 0.3);
    ASSERT_NE(back.getTolerance(), nullptr);
    EXPECT_TRUE(back.getTolerance()->isEqualTo(*manager.getTolerance()));
    EXPECT_EQ(back.getSettingsFiguresUp(), up);
    EXPECT_TRUE(back.getSettingsFiguresDown().empty());
    // The same settings write the same XML.
    EXPECT_EQ(ZemTreeTest::writtenXml([&](xmlpp::Element* root) { back.getXmlData(root->add_child("Manager")); }), xml);
}

TEST(GraphTimeManagerTest, ManagerWithoutToleranceSavesWithoutIt)
{
    GraphTimeManager manager;
    const std::string xml =
        ZemTreeTest::writtenXml([&](xmlpp::Element* root) { manager.getXmlData(root->add_child("Manager")); });
    EXPECT_EQ(xml, "<Manager Description=\"\" Measure=\"\" Formula=\"{T}\" Ioperate=\"1\" Toperate=\"1\">"
                   "<ZsettingsFiguresUp/><ZsettingsFiguresDown/></Manager>");
    ZemTreeTest::ParsedXml parsed(xml);
    GraphTimeManager back("keep", ZemTree::Measures::Volt(), nullptr);
    back.setXmlData(parsed.root());
    EXPECT_EQ(back.getTolerance(), nullptr);
    EXPECT_EQ(back.getMeasure(), nullptr);
    EXPECT_EQ(back.getDescription(), "");
}

TEST(GraphTimeManagerTest, AbsentOrBadAttributesKeepTheFields)
{
    const auto tolerance = toleranceOf("[0;inf]:[-5;5]|");
    GraphTimeManager manager("Current", ZemTree::Measures::Ampere(), tolerance);
    manager.setFormula("{T}*2");
    manager.setIOperate(3.0);
    manager.setTOperate(4.0);
    std::vector<PointF> up{{1.0f, 1.0f}};
    std::vector<PointF> down{{2.0f, 2.0f}};
    manager.setSettingsFigures(up, Zem::Color::Red(), down, Zem::Color::Red());

    ZemTreeTest::ParsedXml parsed("<Manager Measure=\"noSuchMeasure\" Ioperate=\"1,5\" Toperate=\"\" "
                                  "Tolerance=\"[0;inf\"><ZsettingsFiguresUp>5;6;</ZsettingsFiguresUp></Manager>");
    manager.setXmlData(parsed.root());
    EXPECT_EQ(manager.getDescription(), "Current");
    EXPECT_EQ(manager.getMeasure(), ZemTree::Measures::Ampere());
    EXPECT_EQ(manager.getFormula(), "{T}*2");
    EXPECT_EQ(manager.getIOperate(), 3.0);
    EXPECT_EQ(manager.getTOperate(), 4.0);
    EXPECT_EQ(manager.getTolerance(), tolerance);
    // The setting lines are read whatever: a missing one becomes empty.
    EXPECT_EQ(manager.getSettingsFiguresUp(), (std::vector<PointF>{{5.0f, 6.0f}}));
    EXPECT_TRUE(manager.getSettingsFiguresDown().empty());
}

TEST(GraphTimeManagerTest, SettingLineTable)
{
    const float nanF = std::nanf("");
    const float infF = std::numeric_limits<float>::infinity();
    struct Row {
        const char* text;
        std::vector<PointF> expected;
    };
    const std::vector<Row> rows{
        {"", {}},
        {"1;2;3;", {{1, 2}}},
        {"1;2;3;4;", {{1, 2}, {3, 4}}},
        {"1;2;3;4", {{1, 2}, {3, 4}}},
        {";2;3;4;", {{3, 4}}},
        {"1;2;;3;4;5;", {{1, 2}, {4, 5}}},
        {"x;2;3;4;", {{3, 4}}},
        {"1;y;3;4;", {{3, 4}}},
        {"1.5e1;-2.25;", {{15.0f, -2.25f}}},
        {"1,5;2;", {}},
        {"1 ;2;", {}},
        {"1;2x;", {}},
        {"nan;1;-inf;2;infinity;inf;", {{nanF, 1}, {-infF, 2}, {infF, infF}}},
        {"1e40;1;", {{infF, 1}}},
        {"0.1;0.2;", {{0.1f, 0.2f}}},
        {";;;;", {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ZemTreeTest::ParsedXml parsed(std::string("<Manager><Line>") + row.text + "</Line></Manager>");
        std::vector<PointF> line{{99, 99}};
        GraphTimeManager::FillsettingsVector(parsed.root(), "Line", line);
        ASSERT_EQ(line.size(), row.expected.size());
        for (std::size_t i = 0; i < line.size(); ++i) {
            EXPECT_TRUE(ZemTreeTest::sameNumber(line[i].x, row.expected[i].x)) << i << ": " << line[i].x;
            EXPECT_TRUE(ZemTreeTest::sameNumber(line[i].y, row.expected[i].y)) << i << ": " << line[i].y;
        }
    }
}

TEST(GraphTimeManagerTest, SettingLineWithoutTextOrElementIsEmpty)
{
    const char* const documents[] = {
        "<Manager/>",
        "<Manager><Line/></Manager>",
        "<Manager><Line><!-- c --></Line></Manager>",
        "<Manager><Other>1;2;</Other></Manager>",
    };
    for (const char* document : documents) {
        SCOPED_TRACE(document);
        ZemTreeTest::ParsedXml parsed(document);
        std::vector<PointF> line{{1, 1}};
        GraphTimeManager::FillsettingsVector(parsed.root(), "Line", line);
        EXPECT_TRUE(line.empty());
    }
    // The first child of the name counts.
    ZemTreeTest::ParsedXml parsed("<Manager><Line>1;2;</Line><Line>3;4;</Line></Manager>");
    std::vector<PointF> line;
    GraphTimeManager::FillsettingsVector(parsed.root(), "Line", line);
    EXPECT_EQ(line, (std::vector<PointF>{{1, 2}}));
}

} // namespace
