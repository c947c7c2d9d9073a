#include "results/graph/ResultGraph.h"

#include "GraphTestHelper.h"
#include "localisation/TreeRelay.h"
#include "results/NumericFixedAssessment.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/IGraphManager.h"
#include "results/graph/ResultMultiGraph.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using Zem::Point;
using ZemTree::GraphDataRecord;
using ZemTree::GraphDataTable;
using ZemTree::ResultGraph;
using ZemTree::ResultMultiGraph;
using ZemTree::ResultState;

std::shared_ptr<GraphDataRecord> recordIn(ResultState state)
{
    switch (state) {
    case ResultState::Ok:
        return std::make_shared<GraphDataRecord>(1.0, "1", std::make_shared<ZemTree::NumericFixedAssessment>(true));
    case ResultState::NotOk:
        return std::make_shared<GraphDataRecord>(1.0, "1", std::make_shared<ZemTree::NumericFixedAssessment>(false));
    default:
        return std::make_shared<GraphDataRecord>(1.0, "abc", nullptr);
    }
}

// Judges a point by the sign of y: positive is Ok, zero is unusable data, negative is NotOk. Counts its calls.
class SignManager : public ZemTree::IGraphManager {
public:
    explicit SignManager(int tableCount = 1) : _tableCount(tableCount) {}

    void getFigures(const std::map<std::string, std::vector<Point>>&,
                    std::map<std::string, std::unique_ptr<Zem::Figure>>&,
                    std::shared_ptr<ZemTree::GraphDataHeader>&) override
    {
    }
    std::vector<std::shared_ptr<GraphDataTable>> getDataTables(const std::vector<Point>& points) override
    {
        ++calls;
        std::vector<std::shared_ptr<GraphDataTable>> tables;
        for (int i = 0; i < _tableCount; ++i) {
            auto table = std::make_shared<GraphDataTable>(nullptr);
            for (const Point& point : points)
                table->_records.push_back(recordIn(point.y > 0   ? ResultState::Ok
                                                   : point.y < 0 ? ResultState::NotOk
                                                                 : ResultState::Error));
            tables.push_back(table);
        }
        return tables;
    }
    void getXmlData(xmlpp::Element*) override {}
    void setXmlData(const xmlpp::Element*) override {}

    int calls = 0;

private:
    int _tableCount;
};

TEST(GraphDataTableTest, StateIsThatOfTheFirstRecordThatIsNotOk)
{
    const struct {
        const char* name;
        std::vector<ResultState> records;
        ResultState expected;
    } rows[] = {
        {"no records", {}, ResultState::Error},
        {"all Ok", {ResultState::Ok, ResultState::Ok}, ResultState::Ok},
        {"Ok NotOk Error", {ResultState::Ok, ResultState::NotOk, ResultState::Error}, ResultState::NotOk},
        {"Ok Error NotOk", {ResultState::Ok, ResultState::Error, ResultState::NotOk}, ResultState::Error},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GraphDataTable table(nullptr);
        for (const ResultState state : row.records)
            table._records.push_back(recordIn(state));
        EXPECT_EQ(table.getState(), row.expected);
        // A null header is replaced by an empty one.
        ASSERT_NE(table.getHeader(), nullptr);
    }
    // A measurement is written as text; without an assessment a row is a reference reading.
    const GraphDataRecord record(1.0, 0.1 + 0.2, nullptr);
    EXPECT_EQ(record.getResult().getMeasurmentCollection(), std::vector<std::string>{"0.3"});
    EXPECT_EQ(record.getResult().getState(), ResultState::Ok);
}

TEST(ResultGraphTest, StatesWithoutTables)
{
    EXPECT_EQ(ResultGraph().getState(), ResultState::Empty);
    const ResultGraph failed("no data");
    EXPECT_EQ(failed.getState(), ResultState::Error);
    EXPECT_EQ(failed.getStateDescription(), "no data");

    auto manager = std::make_shared<SignManager>();
    EXPECT_EQ(ResultGraph({}, manager).getState(), ResultState::Empty);
    EXPECT_EQ(manager->calls, 0);

    const ResultGraph noManager({{1.0, 1.0}}, nullptr);
    EXPECT_EQ(noManager.getState(), ResultState::Error);
    EXPECT_EQ(noManager.getStateDescription(), lng::TreeRelay::get("result_error"));
    EXPECT_EQ(noManager.getPointCollection(), (std::vector<Point>{{1.0, 1.0}}));
    EXPECT_EQ(ResultGraph({{1.0, 1.0}}, std::make_shared<SignManager>(0)).getState(), ResultState::Error);
}

TEST(ResultGraphTest, FirstTableDecidesAndTablesAreBuiltOnce)
{
    auto manager = std::make_shared<SignManager>(2);
    const ResultGraph result({{1.0, 1.0}, {2.0, -1.0}}, manager);
    EXPECT_EQ(result.getState(), ResultState::NotOk);
    EXPECT_EQ(result.getStateDescription(), lng::TreeRelay::get("result_notOk"));
    EXPECT_EQ(result.getDataTables().size(), 2u);
    // Reading the tables does not build them again.
    EXPECT_EQ(manager->calls, 1);
    EXPECT_EQ(ResultGraph({{1.0, 1.0}, {1.0, 0.0}}, manager).getState(), ResultState::Error);
}

TEST(ResultMultiGraphTest, CurvesFoldIntoOneState)
{
    const struct {
        const char* name;
        std::map<std::string, std::vector<Point>> points;
        ResultState expected;
    } rows[] = {
        {"no curves", {}, ResultState::Error},
        {"all Ok", {{"a", {{1, 1}}}, {"b", {{1, 2}}}}, ResultState::Ok},
        {"NotOk Ok NotOk", {{"a", {{1, -1}}}, {"b", {{1, 1}}}, {"c", {{1, -2}}}}, ResultState::NotOk},
        {"NotOk Error", {{"a", {{1, -1}}}, {"b", {{1, 0}}}}, ResultState::Error},
        {"curve without points", {{"a", {{1, 1}}}, {"b", {}}}, ResultState::Error},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        auto manager = std::make_shared<SignManager>();
        const ResultMultiGraph result(row.points, manager);
        EXPECT_EQ(result.getState(), row.expected);
        EXPECT_EQ(result._items.size(), row.points.size());
        for (const auto& item : result._items)
            EXPECT_EQ(item.second.getManager(), manager.get());
    }
    EXPECT_EQ(ResultMultiGraph({{"a", {{1, 1}}}}, nullptr).getState(), ResultState::Error);
    EXPECT_EQ(ResultMultiGraph().getState(), ResultState::Empty);
}

} // namespace
