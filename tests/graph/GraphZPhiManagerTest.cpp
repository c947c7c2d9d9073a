#include "results/graph/GraphZPhiManager.h"

#include "GraphTestHelper.h"
#include "core/common/PointsSequence.h"
#include "core/tree/Measures.h"
#include "results/NumericFixedAssessment.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/ResultGraph.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using Zem::Point;
using Zem::PointF;
using ZemTree::GraphZPhiManager;
using ZemTree::ResultState;
using Figures = std::map<std::string, std::unique_ptr<Zem::Figure>>;

const char* const KeyUp = "Форма характеристики снизу";
const char* const KeyDown = "Форма характеристики сверху";

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
    struct Row {
        Point point;
        double magnitude, angle, r, x;
    };
    const Row rows[] = {
        {{3.0, 4.0}, 5.0, 53.1301, 3.0, 4.0},
        {{-1.0, 0.0}, 1.0, 180.0, -1.0, 0.0},
        {{0.0, 0.0}, 0.0, 0.0, 0.0, 0.0},
        {{0.0, -2.0}, 2.0, -90.0, 0.0, -2.0},
        {{1.00004, 2.00006}, 2.2361, 63.4347, 1.0, 2.0001},
    };
    auto manager = zoneWithHole();
    std::vector<Point> points;
    for (const Row& row : rows)
        points.push_back(row.point);
    const auto tables = manager->getDataTables(points);
    ASSERT_EQ(tables.size(), 2u);
    ASSERT_EQ(tables[0]->_records.size(), std::size(rows));
    ASSERT_EQ(tables[1]->_records.size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(std::to_string(rows[i].point.x) + ", " + std::to_string(rows[i].point.y));
        const ZemTree::GraphDataRecord& polar = *tables[0]->_records[i];
        const ZemTree::GraphDataRecord& rectangular = *tables[1]->_records[i];
        EXPECT_NEAR(polar.getValue(), rows[i].magnitude, 1e-12);
        EXPECT_NEAR(polar.getResult().getMeasurment(), rows[i].angle, 1e-12);
        EXPECT_NEAR(rectangular.getValue(), rows[i].r, 1e-12);
        EXPECT_NEAR(rectangular.getResult().getMeasurment(), rows[i].x, 1e-12);
    }
    // The measured text is what a report shows.
    EXPECT_EQ(tables[0]->_records[0]->getResult().getMeasurmentCollection(), std::vector<std::string>{"53.1301"});
    EXPECT_EQ(tables[0]->_records[1]->getResult().getMeasurmentCollection(), std::vector<std::string>{"180"});
}

TEST(GraphZPhiManagerTest, HeadersNameThePlanes)
{
    GraphZPhiManager manager;
    for (const int language : {0, 1}) {
        SCOPED_TRACE(language);
        const ZemTreeTest::LanguageGuard guard(language);
        const auto tables = manager.getDataTables({{1.0, 1.0}});
        ASSERT_EQ(tables.size(), 2u);
        const auto polar = tables[0]->getHeader();
        const auto rectangular = tables[1]->getHeader();
        const std::string name = language == 0 ? "Z=f(φ) (complex)" : "Z=f(φ) (компл)";
        EXPECT_EQ(polar->getName(), name);
        EXPECT_EQ(polar->getDescriptionX(), "Z");
        EXPECT_EQ(polar->getMeasureX(), ZemTree::Measures::Ohm());
        EXPECT_EQ(polar->getDescriptionY(), "φ");
        EXPECT_EQ(polar->getMeasureY(), ZemTree::Measures::Gradus());
        EXPECT_EQ(rectangular->getName(), name);
        EXPECT_EQ(rectangular->getDescriptionX(), "R");
        EXPECT_EQ(rectangular->getMeasureX(), ZemTree::Measures::Ohm());
        EXPECT_EQ(rectangular->getDescriptionY(), "X");
        EXPECT_EQ(rectangular->getMeasureY(), ZemTree::Measures::Ohm());
    }
}

TEST(GraphZPhiManagerTest, PointIsValidInsideTheFirstPolygonAndOutsideTheSecond)
{
    struct Row {
        const char* name;
        Point point;
        ResultState state;
    };
    const Row rows[] = {
        {"in the zone", {5.0, 5.0}, ResultState::Ok},
        {"inside both", {0.5, -0.5}, ResultState::NotOk},
        {"outside both", {20.0, 0.0}, ResultState::NotOk},
        {"in the zone, negative", {-9.0, -3.0}, ResultState::Ok},
        {"not a number", {std::nan(""), 5.0}, ResultState::NotOk},
    };
    auto manager = zoneWithHole();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto tables = manager->getDataTables({row.point});
        ASSERT_EQ(tables.size(), 2u);
        for (const auto& table : tables) {
            ASSERT_EQ(table->_records.size(), 1u);
            const ZemTree::ResultNumeric& result = table->_records.front()->getResult();
            EXPECT_EQ(result.getState(), row.state);
            // A fixed verdict has no setting and no deviation.
            const auto* assessment = dynamic_cast<const ZemTree::NumericFixedAssessment*>(result.getAssessment());
            ASSERT_NE(assessment, nullptr);
            EXPECT_EQ(assessment->getDisplayValue(), "");
            EXPECT_FALSE(result.getDeviation().relative().hasValue());
            EXPECT_FALSE(result.getDeviation().absolute().hasValue());
        }
        EXPECT_EQ(ZemTree::ResultGraph({row.point}, manager).getState(), row.state);
    }
    EXPECT_EQ(ZemTree::ResultGraph({{5.0, 5.0}, {0.0, 0.0}, {20.0, 0.0}}, manager).getState(), ResultState::NotOk);
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

TEST(GraphZPhiManagerTest, EmptyPolygonsRejectEveryPoint)
{
    auto manager = std::make_shared<GraphZPhiManager>();
    const auto tables = manager->getDataTables({{0.0, 0.0}, {1.0, 1.0}});
    for (const auto& table : tables)
        EXPECT_EQ(table->getState(), ResultState::NotOk);
    EXPECT_EQ(ZemTree::ResultGraph({{0.0, 0.0}, {1.0, 1.0}}, manager).getState(), ResultState::NotOk);
}

const Zem::PointsSequence& sequenceAt(const Figures& figures, const std::string& key)
{
    const auto found = figures.find(key);
    if (found == figures.end())
        throw std::logic_error("no figure " + key);
    return dynamic_cast<const Zem::PointsSequence&>(*found->second);
}

TEST(GraphZPhiManagerTest, FiguresAreDrawnInTheRxPlane)
{
    auto manager = zoneWithHole();
    Figures figures;
    std::shared_ptr<ZemTree::GraphDataHeader> header;
    manager->getFigures({}, figures, header);
    ASSERT_EQ(figures.size(), 2u);
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->getDescriptionX(), "R");
    EXPECT_EQ(header->getDescriptionY(), "X");

    const Zem::PointsSequence& outer = sequenceAt(figures, KeyUp);
    EXPECT_EQ(outer.getPoints(), square(10.0f));
    EXPECT_EQ(outer.getColor(), Zem::Color::Red());
    EXPECT_TRUE(outer.getIsMarkersVisible());
    EXPECT_TRUE(outer.getIsLinesVisible());
    const Zem::PointsSequence& inner = sequenceAt(figures, KeyDown);
    EXPECT_EQ(inner.getPoints(), square(1.0f));
    EXPECT_EQ(inner.getColor(), Zem::Color::Green());
    EXPECT_TRUE(inner.getIsMarkersVisible());
    EXPECT_TRUE(inner.getIsLinesVisible());

    Figures withCurve;
    manager->getFigures({{"Zone 1", {{2.0, 3.0}}}}, withCurve, header);
    ASSERT_EQ(withCurve.size(), 3u);
    const Zem::PointsSequence& curve = sequenceAt(withCurve, "Zone 1");
    EXPECT_EQ(curve.getPoints(), (std::vector<PointF>{{2.0f, 3.0f}}));
    EXPECT_EQ(curve.getColor(), Zem::Color(0, 0, 255, 255));
    EXPECT_TRUE(curve.getIsMarkersVisible());
    EXPECT_FALSE(curve.getIsLinesVisible());
}

TEST(GraphZPhiManagerTest, XmlIsOnlyThePolygons)
{
    auto manager = std::make_shared<GraphZPhiManager>();
    std::vector<PointF> outer{{-1.5f, 0.0f}, {2.0f, 0.25f}, {0.0f, 3.0f}};
    std::vector<PointF> inner;
    manager->setSettingsFigures(outer, Zem::Color::Red(), inner, Zem::Color::Red());
    const std::string xml =
        ZemTreeTest::writtenXml([&](xmlpp::Element* root) { manager->getXmlData(root->add_child("Manager")); });
    EXPECT_EQ(xml, "<Manager><ZsettingsFiguresUp>-1.5;0;2;0.25;0;3;</ZsettingsFiguresUp>"
                   "<ZsettingsFiguresDown/></Manager>");

    ZemTreeTest::ParsedXml parsed(xml);
    GraphZPhiManager back;
    back.setXmlData(parsed.root());
    EXPECT_EQ(back.getSettingsFiguresUp(), outer);
    EXPECT_TRUE(back.getSettingsFiguresDown().empty());
}

TEST(GraphZPhiManagerTest, ManagerElementWithoutChildrenGivesEmptyPolygons)
{
    auto manager = zoneWithHole();
    ZemTreeTest::ParsedXml parsed("<Manager Type=\"x\"/>");
    EXPECT_NO_THROW(manager->setXmlData(parsed.root()));
    EXPECT_TRUE(manager->getSettingsFiguresUp().empty());
    EXPECT_TRUE(manager->getSettingsFiguresDown().empty());
}

} // namespace
