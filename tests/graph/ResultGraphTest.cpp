#include "results/graph/ResultGraph.h"

#include "GraphTestHelper.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/TypeHelper.h"
#include "core/tree/MeasureTypeConverter.h"
#include "core/tree/Measures.h"
#include "core/tree/Tolerance.h"
#include "localisation/TreeRelay.h"
#include "results/NumericFixedAssessment.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/IGraphManager.h"
#include "results/graph/ResultMultiGraph.h"
#include "results/graph/ResultMultiGraphTypeConverter.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
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

using ZemTree::GraphTimeManager;
using ZemTree::ResultMultiGraphTypeConverter;

std::string write(const ResultMultiGraph& result)
{
    return ZemTreeTest::writtenXml(
        [&](xmlpp::Element* root) { ResultMultiGraphTypeConverter::toXmlData(result, root); });
}

// Reads `xml`; the result stays null when the reader says false.
std::shared_ptr<ResultMultiGraph> read(const std::string& xml, bool expectRead = true)
{
    ZemTreeTest::ParsedXml parsed(xml);
    std::shared_ptr<ResultMultiGraph> result;
    EXPECT_EQ(ResultMultiGraphTypeConverter::fromXmlData(parsed.root(), result), expectRead) << xml;
    return result;
}

TEST(ResultMultiGraphTypeConverterTest, TimeManagerResultReadsBackWithItsManager)
{
    std::shared_ptr<ZemTree::Tolerance> tolerance;
    ASSERT_TRUE((Zem::tryConvert<std::shared_ptr<ZemTree::Tolerance>, true, true>("[0;inf]:[-10;10]|", tolerance)));
    auto manager = std::make_shared<GraphTimeManager>("I", ZemTree::Measures::Ampere(), tolerance);
    manager->setFormula("{T}*13.5/({x}/{I}-1)");
    manager->setTOperate(0.1);
    // 13.5 * 0.1 / (x - 1): 1.35 at 2, 0.45 at 4; the tolerance is 10 %.
    const ResultMultiGraph result({{"A", {{2.0, 1.4}, {4.0, 0.45}}}, {"B", {{2.0, 1.6}, {-3.0, 1e-14}}}}, manager);
    ASSERT_EQ(result.getState(), ResultState::NotOk);
    const std::string xml = write(result);
    EXPECT_EQ(xml, "<ResultMultiGraph><Manager Type=\"" + Zem::TypeHelper::getTypeName(typeid(GraphTimeManager))
                       + "\" Description=\"I\" Measure=\""
                       + ZemTree::MeasureTypeConverter::toStringData(ZemTree::Measures::Ampere())
                       + "\" Formula=\"{T}*13.5/({x}/{I}-1)\" Ioperate=\"1\" Toperate=\"0.1\" "
                         "Tolerance=\"[0;inf]:[-10;10]|\"><ZsettingsFiguresUp/><ZsettingsFiguresDown/></Manager>"
                         "<Items><Item Name=\"A\"><Value>2;1.4|4;0.45</Value></Item>"
                         "<Item Name=\"B\"><Value>2;1.6|-3;0</Value></Item></Items></ResultMultiGraph>");

    const auto back = read(xml);
    ASSERT_NE(back, nullptr);
    const auto* backManager = dynamic_cast<GraphTimeManager*>(back->getManager());
    ASSERT_NE(backManager, nullptr);
    EXPECT_NE(backManager, manager.get());
    // The verdicts are recomputed from the points and the manager's settings.
    EXPECT_EQ(back->getState(), ResultState::NotOk);
    EXPECT_EQ(back->_items.at("A").getState(), ResultState::Ok);
    EXPECT_EQ(back->_items.at("B").getState(), ResultState::NotOk);
    for (const auto& item : back->_items)
        EXPECT_EQ(item.second.getManager(), back->getManager());
    EXPECT_EQ(write(*back), xml);
}

TEST(ResultMultiGraphTypeConverterTest, EmptyResultAndResultWithoutManager)
{
    EXPECT_EQ(write(ResultMultiGraph()), "<ResultMultiGraph/>");
    const auto empty = read("<ResultMultiGraph Extra=\"1\">\n  <!-- x -->\n</ResultMultiGraph>");
    ASSERT_NE(empty, nullptr);
    EXPECT_TRUE(empty->isEmpty());

    const std::string xml = write(ResultMultiGraph({{"A", {{1.0, 2.0}}}}, nullptr));
    EXPECT_EQ(xml, "<ResultMultiGraph><Items><Item Name=\"A\"><Value>1;2</Value></Item></Items></ResultMultiGraph>");
    const auto back = read(xml);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->getState(), ResultState::Error);
    EXPECT_EQ(back->_items.at("A").getPointCollection(), (std::vector<Point>{{1.0, 2.0}}));
}

TEST(ResultMultiGraphTypeConverterTest, RefusedElementsLeaveTheResult)
{
    const char* const documents[] = {
        "<ResultMultiNumeric><Items/></ResultMultiNumeric>",
        "<resultmultigraph/>",
        // A manager must name its type.
        "<ResultMultiGraph><Manager Formula=\"{T}\"/><Items/></ResultMultiGraph>",
    };
    for (const char* document : documents) {
        SCOPED_TRACE(document);
        ZemTreeTest::ParsedXml parsed(document);
        auto kept = std::make_shared<ResultMultiGraph>();
        const ResultMultiGraph* before = kept.get();
        EXPECT_FALSE(ResultMultiGraphTypeConverter::fromXmlData(parsed.root(), kept));
        EXPECT_EQ(kept.get(), before);
    }
    std::shared_ptr<ResultMultiGraph> result;
    EXPECT_FALSE(ResultMultiGraphTypeConverter::fromXmlData(nullptr, result));
}

// An unknown manager type gives no manager, so every curve with points is in Error and one without stays Empty.
TEST(ResultMultiGraphTypeConverterTest, ItemsAreReadTolerantly)
{
    const auto back = read("<ResultMultiGraph><Manager Type=\"Nobody::Knows\"/><Items>text"
                           "<Item Name=\"A\"><Value>2;1</Value></Item><Item><Value>5;5</Value></Item>"
                           "<Item Name=\"A\"><Value>7;7</Value></Item><Item Name=\"C\"/>"
                           "<Item Name=\"D\"><Other>1;1</Other><Value>3;1|</Value></Item></Items></ResultMultiGraph>");
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->getManager(), nullptr);
    ASSERT_EQ(back->_items.size(), 3u);
    // Of two items of one name the first counts.
    EXPECT_EQ(back->_items.at("A").getPointCollection(), (std::vector<Point>{{2.0, 1.0}}));
    EXPECT_EQ(back->_items.at("D").getPointCollection(), (std::vector<Point>{{3.0, 1.0}}));
    EXPECT_EQ(back->_items.at("A").getState(), ResultState::Error);
    EXPECT_EQ(back->_items.at("C").getState(), ResultState::Empty);
    EXPECT_EQ(back->getState(), ResultState::Error);
}

TEST(ResultMultiGraphTypeConverterTest, PointListTable)
{
    const struct {
        const char* text;
        std::vector<Point> expected;
    } rows[] = {
        {"", {}},
        {"1;2|x;3|4", {{1, 2}}},
        {"|1;2||3;4|", {{1, 2}, {3, 4}}},
        {"1;2;3", {}},
        {";1", {}},
        {"1,5;2", {}},
        {"-1.5;2e3|nan;-inf", {{-1.5, 2000}, {std::nan(""), -std::numeric_limits<double>::infinity()}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const std::vector<Point> points = ResultMultiGraphTypeConverter::pointsFromText(row.text);
        ASSERT_EQ(points.size(), row.expected.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            EXPECT_TRUE(ZemTreeTest::sameNumber(points[i].x, row.expected[i].x)) << i;
            EXPECT_TRUE(ZemTreeTest::sameNumber(points[i].y, row.expected[i].y)) << i;
        }
    }
    EXPECT_EQ(ResultMultiGraphTypeConverter::pointsToText({{1.0, 0.5}, {1e-14, 1234.5}}), "1;0.5|0;1234.5");
}

} // namespace
