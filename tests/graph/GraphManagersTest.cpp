#include "GraphTestHelper.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/PointsSequence.h"
#include "core/tree/MeasureTypeConverter.h"
#include "core/tree/Measures.h"
#include "core/tree/Tolerance.h"
#include "results/NumericFixedAssessment.h"
#include "results/NumericSettingAssessment.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/GraphManagerHelper.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"
#include "results/graph/ResultGraph.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

using ZemTree::GraphTimeManager;
using ZemTree::GraphZPhiManager;

using ZemTree::GraphManagerHelper;

TEST(GraphManagerHelperTest, DoublesBeyondTheFloatsBecomeInfinities)
{
    const float largest = std::numeric_limits<float>::max();
    const float inf = std::numeric_limits<float>::infinity();
    const struct {
        double value;
        float expected;
    } rows[] = {
        {0.1, 0.1f},
        // Less than half a float step above the largest float still rounds down to it.
        {static_cast<double>(largest) * (1.0 + 1e-9), largest},
        {1e39, inf},
        {-1e39, -inf},
        {1e-50, 0.0f},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(GraphManagerHelper::toFloat(row.value), row.expected);
    }
    EXPECT_TRUE(std::isnan(GraphManagerHelper::toFloat(std::nan(""))));
}

using Zem::PointF;
using ZemTree::ResultState;

std::shared_ptr<ZemTree::Tolerance> toleranceOf(const std::string& text)
{
    std::shared_ptr<ZemTree::Tolerance> tolerance;
    EXPECT_TRUE((Zem::tryConvert<std::shared_ptr<ZemTree::Tolerance>, true, true>(text, tolerance))) << text;
    return tolerance;
}

std::string xmlOf(GraphTimeManager& manager)
{
    return ZemTreeTest::writtenXml([&](xmlpp::Element* root) { manager.getXmlData(root->add_child("Manager")); });
}

TEST(GraphTimeManagerTest, CalculateTimeTable)
{
    const double nan = std::nan("");
    const struct {
        const char* formula;
        double iOperate, tOperate, x;
        double expected; // NaN: not a number
    } rows[] = {
        {"{T}*0.14/(({x}/{I})^0.02-1)", 1.5, 0.3, 7.5, 0.3 * 0.14 / (std::pow(5.0, 0.02) - 1.0)},
        // Every placeholder is replaced, however often it stands; a negative number stands behind an operator.
        {"{x}+{x}*{T}-{I}", 1.0, 3.0, -2.0, -9.0},
        // Below 1e-13 a number is written as "0".
        {"{x}+1", 1.0, 1.0, 1e-14, 1.0},
        // A text result counts when it reads as a number.
        {"\"2.5\"", 1.0, 1.0, 1.0, 2.5},
        {"\"abc\"", 1.0, 1.0, 1.0, nan},
        {"{T}*foo({x})", 1.0, 1.0, 2.0, nan},
        // A placeholder that is not one of the three stays a reference, which nothing resolves.
        {"{y}", 1.0, 1.0, 2.0, nan},
        {"{x}", 1.0, 1.0, nan, nan},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.formula);
        const double time = GraphTimeManager::CalculateTime(row.formula, row.iOperate, row.tOperate, row.x);
        if (std::isnan(row.expected))
            EXPECT_TRUE(std::isnan(time)) << time;
        else
            EXPECT_NEAR(time, row.expected, std::fabs(row.expected) * 1e-9);
    }
}

// The expected time comes from the formula at the point's argument, and so does the tolerance item.
TEST(GraphTimeManagerTest, PointsAreJudgedAgainstTheCharacteristicAtTheirArgument)
{
    const char* const veryInverse = "{T}*13.5/({x}/{I}-1)";
    const char* const stepped = "[0;5]:[-1;1]| [5;inf]:[-20;20]|";
    const struct {
        const char* text;
        const char* tolerance;
        const char* formula;
        Zem::Point point;
        ResultState state;
        double relative;
    } rows[] = {
        {"3 % off", "[0;inf]:[-5;5]|", veryInverse, {4.0, 13.905}, ResultState::Ok, 3.0},
        {"10 % off", "[0;inf]:[-5;5]|", veryInverse, {4.0, 14.85}, ResultState::NotOk, 10.0},
        {"narrow item at the argument", stepped, "{T}*10", {2.0, 11.0}, ResultState::NotOk, 10.0},
        {"wide item at the argument", stepped, "{T}*10", {8.0, 11.0}, ResultState::Ok, 10.0},
        {"no tolerance admits the setting alone", "", "{T}", {2.0, 1.0}, ResultState::Ok, 0.0},
        {"no tolerance, off", "", "{T}", {2.0, 1.5}, ResultState::NotOk, 50.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        GraphTimeManager manager("I", nullptr, *row.tolerance == '\0' ? nullptr : toleranceOf(row.tolerance));
        manager.setFormula(row.formula);
        manager.setIOperate(2.0);
        const auto tables = manager.getDataTables({row.point});
        ASSERT_EQ(tables.size(), 1u);
        ASSERT_EQ(tables[0]->_records.size(), 1u);
        const ZemTree::ResultNumeric& result = tables[0]->_records[0]->getResult();
        EXPECT_EQ(result.getState(), row.state);
        ASSERT_TRUE(result.getDeviation().relative().hasValue());
        EXPECT_NEAR(result.getDeviation().relative().getValue(), row.relative, 0.011);
    }

    // A formula that does not evaluate gives a NaN setting, which rejects the point quietly: no Error.
    GraphTimeManager manager("I", nullptr, toleranceOf("[-inf;inf]:[-50;50]|[-100;100]"));
    manager.setFormula("{T}*unknownWord({x})");
    const auto tables = manager.getDataTables({{1.0, 1.0}});
    ASSERT_EQ(tables.size(), 1u);
    const ZemTree::ResultNumeric& result = tables[0]->_records.at(0)->getResult();
    EXPECT_EQ(result.getState(), ResultState::NotOk);
    const auto* setting = dynamic_cast<const ZemTree::NumericSettingAssessment*>(result.getAssessment());
    ASSERT_NE(setting, nullptr);
    EXPECT_TRUE(std::isnan(setting->getSetting()));
}

TEST(GraphTimeManagerTest, FiguresHoldTheCurvesAndTheSettingLinesUnderTheirKeys)
{
    const char* const keyUp = "Форма характеристики снизу";
    const char* const keyDown = "Форма характеристики сверху";
    GraphTimeManager manager("I", ZemTree::Measures::Ampere(), nullptr);
    std::vector<PointF> up{{1.0f, 2.0f}, {3.0f, 1.0f}};
    std::vector<PointF> down;
    manager.setSettingsFigures(up, Zem::Color::Red(), down, Zem::Color::Green());

    std::map<std::string, std::unique_ptr<Zem::Figure>> figures;
    figures["A"] =
        std::make_unique<Zem::PointsSequence>(std::vector<PointF>{{9, 9}}, Zem::Color::Gray(), "", false, false);
    std::shared_ptr<ZemTree::GraphDataHeader> header;
    manager.getFigures({{"A", {{1.0, 1.0}}}, {"B", {{1.5, 0.1}}}, {keyDown, {{2.0, 2.0}}}}, figures, header);
    ASSERT_EQ(figures.size(), 4u);
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->getMeasureY(), ZemTree::Measures::Second());
    const auto sequence = [&figures](const std::string& key) -> const Zem::PointsSequence& {
        return dynamic_cast<const Zem::PointsSequence&>(*figures.at(key));
    };
    // What is already in the map stays; curves show markers only, setting lines lines only.
    EXPECT_EQ(sequence("A").getColor(), Zem::Color::Gray());
    EXPECT_FALSE(sequence("B").getIsLinesVisible());
    // The line saved as ZsettingsFiguresUp goes under the key that ends in "снизу".
    EXPECT_EQ(sequence(keyUp).getPoints(), up);
    EXPECT_FALSE(sequence(keyUp).getIsMarkersVisible());
    // A curve under a setting line's key is inserted first; the setting line is dropped.
    EXPECT_TRUE(sequence(keyDown).getIsMarkersVisible());
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

    const std::string xml = xmlOf(manager);
    EXPECT_EQ(xml, "<Manager Description=\"Current\" Measure=\""
                       + ZemTree::MeasureTypeConverter::toStringData(ZemTree::Measures::Ampere())
                       + "\" Formula=\"{T}*0.14/(({x}/{I})^0.02-1)\" Ioperate=\"1.25\" Toperate=\"0.3\" "
                         "Tolerance=\"[0;10]:[-5;5]| [10;inf]:|[-0.1;0.1]\">"
                         "<ZsettingsFiguresUp>1.5;2;10;0.25;</ZsettingsFiguresUp><ZsettingsFiguresDown/></Manager>");
    ZemTreeTest::ParsedXml parsed(xml);
    GraphTimeManager back;
    back.setXmlData(parsed.root());
    EXPECT_EQ(xmlOf(back), xml);

    // A manager without tolerance and measure saves without them, and reads back so.
    GraphTimeManager bare;
    EXPECT_EQ(xmlOf(bare), "<Manager Description=\"\" Measure=\"\" Formula=\"{T}\" Ioperate=\"1\" Toperate=\"1\">"
                           "<ZsettingsFiguresUp/><ZsettingsFiguresDown/></Manager>");
    ZemTreeTest::ParsedXml bareParsed(xmlOf(bare));
    back.setXmlData(bareParsed.root());
    EXPECT_EQ(back.getMeasure(), nullptr);
    EXPECT_EQ(back.getDescription(), "");
}

TEST(GraphTimeManagerTest, AbsentOrBadAttributesKeepTheFields)
{
    const auto tolerance = toleranceOf("[0;inf]:[-5;5]|");
    GraphTimeManager manager("Current", ZemTree::Measures::Ampere(), tolerance);
    manager.setIOperate(3.0);
    manager.setTOperate(4.0);
    std::vector<PointF> line{{2.0f, 2.0f}};
    manager.setSettingsFigures(line, Zem::Color::Red(), line, Zem::Color::Red());

    ZemTreeTest::ParsedXml parsed("<Manager Measure=\"noSuchMeasure\" Ioperate=\"1,5\" Toperate=\"\" "
                                  "Tolerance=\"[0;inf\"><ZsettingsFiguresUp>5;6;</ZsettingsFiguresUp></Manager>");
    manager.setXmlData(parsed.root());
    EXPECT_EQ(manager.getMeasure(), ZemTree::Measures::Ampere());
    EXPECT_EQ(manager.getIOperate(), 3.0);
    EXPECT_EQ(manager.getTOperate(), 4.0);
    EXPECT_EQ(manager.getTolerance(), tolerance);
    // The setting lines are read whatever: a missing one becomes empty.
    EXPECT_EQ(manager.getSettingsFiguresUp(), (std::vector<PointF>{{5.0f, 6.0f}}));
    EXPECT_TRUE(manager.getSettingsFiguresDown().empty());
}

TEST(GraphTimeManagerTest, SettingLineTable)
{
    const float infF = std::numeric_limits<float>::infinity();
    const struct {
        const char* document;
        std::vector<PointF> expected;
    } rows[] = {
        {"<M/>", {}},
        {"<M><Line>1;2;;3;4;5;</Line></M>", {{1, 2}, {4, 5}}},
        {"<M><Line>x;2;3;4;</Line></M>", {{3, 4}}},
        {"<M><Line>1,5;2;</Line></M>", {}},
        {"<M><Line>nan;1;-inf;2;1e40;1;</Line></M>", {{std::nanf(""), 1}, {-infF, 2}, {infF, 1}}},
        // The first child of the name counts.
        {"<M><Line>1;2;</Line><Line>3;4;</Line></M>", {{1, 2}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.document);
        ZemTreeTest::ParsedXml parsed(row.document);
        std::vector<PointF> line{{99, 99}};
        GraphTimeManager::FillsettingsVector(parsed.root(), "Line", line);
        ASSERT_EQ(line.size(), row.expected.size());
        for (std::size_t i = 0; i < line.size(); ++i) {
            EXPECT_TRUE(ZemTreeTest::sameNumber(line[i].x, row.expected[i].x)) << i << ": " << line[i].x;
            EXPECT_TRUE(ZemTreeTest::sameNumber(line[i].y, row.expected[i].y)) << i << ": " << line[i].y;
        }
    }
}

using Zem::Point;

std::vector<PointF> square(float half)
{
    return {{-half, -half}, {half, -half}, {half, half}, {-half, half}};
}

// A zone of the plane from -10 to 10 with a hole from -1 to 1.
std::shared_ptr<GraphZPhiManager> zoneWithHole()
{
    auto manager = std::make_shared<GraphZPhiManager>();
    std::vector<PointF> outer = square(10.0f);
    std::vector<PointF> inner = square(1.0f);
    manager->setSettingsFigures(outer, Zem::Color::Red(), inner, Zem::Color::Green());
    return manager;
}

TEST(GraphZPhiManagerTest, TablesGivePolarAndRectangularForms)
{
    const struct {
        Point point;
        double magnitude, angle, r, x;
    } rows[] = {
        {{3.0, 4.0}, 5.0, 53.1301, 3.0, 4.0},
        {{-1.0, 0.0}, 1.0, 180.0, -1.0, 0.0},
        {{0.0, -2.0}, 2.0, -90.0, 0.0, -2.0},
        {{1.00004, 2.00006}, 2.2361, 63.4347, 1.0, 2.0001},
    };
    std::vector<Point> points;
    for (const auto& row : rows)
        points.push_back(row.point);
    const auto tables = zoneWithHole()->getDataTables(points);
    ASSERT_EQ(tables.size(), 2u);
    EXPECT_EQ(tables[0]->getHeader()->getDescriptionX(), "Z");
    EXPECT_EQ(tables[1]->getHeader()->getDescriptionX(), "R");
    ASSERT_EQ(tables[0]->_records.size(), std::size(rows));
    ASSERT_EQ(tables[1]->_records.size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(i);
        const ZemTree::GraphDataRecord& polar = *tables[0]->_records[i];
        const ZemTree::GraphDataRecord& rectangular = *tables[1]->_records[i];
        EXPECT_NEAR(polar.getValue(), rows[i].magnitude, 1e-12);
        EXPECT_NEAR(polar.getResult().getMeasurment(), rows[i].angle, 1e-12);
        EXPECT_NEAR(rectangular.getValue(), rows[i].r, 1e-12);
        EXPECT_NEAR(rectangular.getResult().getMeasurment(), rows[i].x, 1e-12);
    }
    EXPECT_EQ(tables[0]->_records[0]->getResult().getMeasurmentCollection(), std::vector<std::string>{"53.1301"});
}

TEST(GraphZPhiManagerTest, PointIsValidInsideTheFirstPolygonAndOutsideTheSecond)
{
    const struct {
        const char* name;
        Point point;
        ResultState state;
    } rows[] = {
        {"in the zone", {5.0, 5.0}, ResultState::Ok},
        {"inside both", {0.5, -0.5}, ResultState::NotOk},
        {"outside both", {20.0, 0.0}, ResultState::NotOk},
        {"not a number", {std::nan(""), 5.0}, ResultState::NotOk},
    };
    auto manager = zoneWithHole();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (const auto& table : manager->getDataTables({row.point})) {
            ASSERT_EQ(table->_records.size(), 1u);
            const ZemTree::ResultNumeric& result = table->_records.front()->getResult();
            EXPECT_EQ(result.getState(), row.state);
            // A fixed verdict has no setting and no deviation.
            EXPECT_NE(dynamic_cast<const ZemTree::NumericFixedAssessment*>(result.getAssessment()), nullptr);
            EXPECT_FALSE(result.getDeviation().relative().hasValue());
        }
        EXPECT_EQ(ZemTree::ResultGraph({row.point}, manager).getState(), row.state);
    }
    // Empty polygons reject every point.
    EXPECT_EQ(ZemTree::ResultGraph({{0.0, 0.0}}, std::make_shared<GraphZPhiManager>()).getState(), ResultState::NotOk);
}

// The verdict rests on the measured point, not on the rounded numbers of the table.
TEST(GraphZPhiManagerTest, VerdictUsesTheUnroundedPoint)
{
    auto manager = std::make_shared<GraphZPhiManager>();
    std::vector<PointF> outer{{0.0f, 0.0f}, {1.0f, 0.0f}, {1.0f, 1.0f}, {0.0f, 1.0f}};
    std::vector<PointF> none;
    manager->setSettingsFigures(outer, Zem::Color::Red(), none, Zem::Color::Red());
    // 1.00004 rounds to 1.0 in the table, on the edge; the point itself lies well outside the edge's margin.
    const auto tables = manager->getDataTables({{1.00004, 0.5}});
    ASSERT_EQ(tables.size(), 2u);
    EXPECT_EQ(tables[1]->_records.front()->getValue(), 1.0);
    EXPECT_EQ(tables[1]->_records.front()->getResult().getState(), ResultState::NotOk);
    // With no second polygon only the first decides.
    EXPECT_EQ(manager->getDataTables({{0.5, 0.5}})[0]->getState(), ResultState::Ok);
}

TEST(GraphZPhiManagerTest, XmlIsOnlyThePolygons)
{
    GraphZPhiManager manager;
    std::vector<PointF> outer{{-1.5f, 0.0f}, {2.0f, 0.25f}, {0.0f, 3.0f}};
    std::vector<PointF> inner;
    manager.setSettingsFigures(outer, Zem::Color::Red(), inner, Zem::Color::Red());
    const std::string xml =
        ZemTreeTest::writtenXml([&](xmlpp::Element* root) { manager.getXmlData(root->add_child("Manager")); });
    EXPECT_EQ(xml, "<Manager><ZsettingsFiguresUp>-1.5;0;2;0.25;0;3;</ZsettingsFiguresUp>"
                   "<ZsettingsFiguresDown/></Manager>");
    ZemTreeTest::ParsedXml parsed(xml);
    auto back = zoneWithHole();
    back->setXmlData(parsed.root());
    EXPECT_EQ(back->getSettingsFiguresUp(), outer);
    EXPECT_TRUE(back->getSettingsFiguresDown().empty());

    // A manager element without children gives empty polygons.
    ZemTreeTest::ParsedXml bare("<Manager Type=\"x\"/>");
    EXPECT_NO_THROW(back->setXmlData(bare.root()));
    EXPECT_TRUE(back->getSettingsFiguresUp().empty());
}

} // namespace
