#include "results/graph/GraphZPhiManager.h"

#include "GraphTestHelper.h"
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
