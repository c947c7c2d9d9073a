#include "results/graph/ResultMultiGraphTypeConverter.h"

#include "GraphTestHelper.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/TypeHelper.h"
#include "core/tree/MeasureTypeConverter.h"
#include "core/tree/Measures.h"
#include "core/tree/Tolerance.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"
#include "results/graph/ResultMultiGraph.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

using Zem::Point;
using Zem::PointF;
using ZemTree::GraphTimeManager;
using ZemTree::GraphZPhiManager;
using ZemTree::ResultMultiGraph;
using ZemTree::ResultMultiGraphTypeConverter;
using ZemTree::ResultState;

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

std::shared_ptr<GraphTimeManager> timeManager()
{
    std::shared_ptr<ZemTree::Tolerance> tolerance;
    EXPECT_TRUE((Zem::tryConvert<std::shared_ptr<ZemTree::Tolerance>, true, true>("[0;inf]:[-10;10]|", tolerance)));
    auto manager = std::make_shared<GraphTimeManager>("I", ZemTree::Measures::Ampere(), tolerance);
    manager->setFormula("{T}*13.5/({x}/{I}-1)");
    manager->setIOperate(1.0);
    manager->setTOperate(0.1);
    std::vector<PointF> up{{2.0f, 1.5f}, {4.0f, 0.5f}};
    std::vector<PointF> down{{2.0f, 1.2f}, {4.0f, 0.4f}};
    manager->setSettingsFigures(up, Zem::Color::Red(), down, Zem::Color::Red());
    return manager;
}

TEST(ResultMultiGraphTypeConverterTest, XmlOfTimeManagerResult)
{
    auto manager = std::make_shared<GraphTimeManager>("I", ZemTree::Measures::None(), nullptr);
    const ResultMultiGraph result({{"Phase A", {{1.0, 0.5}, {2.0, 0.25}}}, {"Phase B", {{-3.0, 1e-14}}}}, manager);
    const std::string type = Zem::TypeHelper::getTypeName(typeid(GraphTimeManager));
    EXPECT_EQ(write(result), "<ResultMultiGraph><Manager Type=\"" + type + "\" Description=\"I\" Measure=\""
                                 + ZemTree::MeasureTypeConverter::toStringData(ZemTree::Measures::None())
                                 + "\" Formula=\"{T}\" Ioperate=\"1\" Toperate=\"1\">"
                                   "<ZsettingsFiguresUp/><ZsettingsFiguresDown/></Manager>"
                                   "<Items><Item Name=\"Phase A\"><Value>1;0.5|2;0.25</Value></Item>"
                                   "<Item Name=\"Phase B\"><Value>-3;0</Value></Item></Items></ResultMultiGraph>");
}

TEST(ResultMultiGraphTypeConverterTest, TimeManagerResultReadsBackWithItsManager)
{
    const auto manager = timeManager();
    // 13.5 * 0.1 / (x - 1): 1.35 at 2, 0.45 at 4; the tolerance is 10 %.
    const ResultMultiGraph result({{"A", {{2.0, 1.4}, {4.0, 0.45}}}, {"B", {{2.0, 1.6}}}}, manager);
    ASSERT_EQ(result.getState(), ResultState::NotOk);
    const std::string xml = write(result);

    const auto back = read(xml);
    ASSERT_NE(back, nullptr);
    const auto* backManager = dynamic_cast<GraphTimeManager*>(back->getManager());
    ASSERT_NE(backManager, nullptr);
    EXPECT_NE(backManager, manager.get());
    EXPECT_EQ(backManager->getFormula(), manager->getFormula());
    EXPECT_EQ(backManager->getTOperate(), 0.1);
    EXPECT_EQ(backManager->getMeasure(), ZemTree::Measures::Ampere());
    ASSERT_NE(backManager->getTolerance(), nullptr);
    EXPECT_TRUE(backManager->getTolerance()->isEqualTo(*manager->getTolerance()));
    EXPECT_EQ(backManager->getSettingsFiguresUp(), manager->getSettingsFiguresUp());
    EXPECT_EQ(backManager->getSettingsFiguresDown(), manager->getSettingsFiguresDown());

    // The verdicts are recomputed from the points and the manager's settings.
    EXPECT_EQ(back->getState(), ResultState::NotOk);
    ASSERT_EQ(back->_items.size(), 2u);
    EXPECT_EQ(back->_items.at("A").getState(), ResultState::Ok);
    EXPECT_EQ(back->_items.at("B").getState(), ResultState::NotOk);
    EXPECT_EQ(back->_items.at("A").getPointCollection(), (std::vector<Point>{{2.0, 1.4}, {4.0, 0.45}}));
    for (const auto& item : back->_items)
        EXPECT_EQ(item.second.getManager(), back->getManager());
    EXPECT_EQ(write(*back), xml);
}

TEST(ResultMultiGraphTypeConverterTest, ZPhiManagerResultReadsBackWithItsManager)
{
    auto manager = std::make_shared<GraphZPhiManager>();
    std::vector<PointF> outer{{-10.0f, -10.0f}, {10.0f, -10.0f}, {10.0f, 10.0f}, {-10.0f, 10.0f}};
    std::vector<PointF> inner{{-1.0f, -1.0f}, {1.0f, -1.0f}, {1.0f, 1.0f}, {-1.0f, 1.0f}};
    manager->setSettingsFigures(outer, Zem::Color::Red(), inner, Zem::Color::Red());
    const ResultMultiGraph result({{"Zone 1", {{3.0, 4.0}, {5.0, -2.5}}}, {"Zone 2", {{0.5, 0.5}}}}, manager);
    ASSERT_EQ(result.getState(), ResultState::NotOk);
    const std::string xml = write(result);
    EXPECT_NE(xml.find("<Manager Type=\"" + Zem::TypeHelper::getTypeName(typeid(GraphZPhiManager))
                       + "\"><ZsettingsFiguresUp>-10;-10;10;-10;10;10;-10;10;</ZsettingsFiguresUp>"),
              std::string::npos)
        << xml;

    const auto back = read(xml);
    ASSERT_NE(back, nullptr);
    const auto* backManager = dynamic_cast<GraphZPhiManager*>(back->getManager());
    ASSERT_NE(backManager, nullptr);
    EXPECT_EQ(backManager->getSettingsFiguresUp(), outer);
    EXPECT_EQ(backManager->getSettingsFiguresDown(), inner);
    EXPECT_EQ(back->getState(), ResultState::NotOk);
    EXPECT_EQ(back->_items.at("Zone 1").getState(), ResultState::Ok);
    EXPECT_EQ(back->_items.at("Zone 2").getState(), ResultState::NotOk);
    EXPECT_EQ(write(*back), xml);
}

TEST(ResultMultiGraphTypeConverterTest, EmptyResultIsABareElement)
{
    const std::string xml = write(ResultMultiGraph());
    EXPECT_EQ(xml, "<ResultMultiGraph/>");
    for (const std::string& text :
         {xml, std::string("<ResultMultiGraph Extra=\"1\">\n  <!-- x -->\n</ResultMultiGraph>")}) {
        SCOPED_TRACE(text);
        const auto back = read(text);
        ASSERT_NE(back, nullptr);
        EXPECT_TRUE(back->isEmpty());
        EXPECT_EQ(back->getManager(), nullptr);
    }
}

TEST(ResultMultiGraphTypeConverterTest, ResultWithoutManagerIsSavedWithoutItAndStaysError)
{
    const ResultMultiGraph result({{"A", {{1.0, 2.0}}}}, nullptr);
    ASSERT_EQ(result.getState(), ResultState::Error);
    const std::string xml = write(result);
    EXPECT_EQ(xml, "<ResultMultiGraph><Items><Item Name=\"A\"><Value>1;2</Value></Item></Items></ResultMultiGraph>");
    const auto back = read(xml);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->getState(), ResultState::Error);
    EXPECT_EQ(back->_items.at("A").getPointCollection(), (std::vector<Point>{{1.0, 2.0}}));
}

TEST(ResultMultiGraphTypeConverterTest, UnknownManagerTypeGivesNoManager)
{
    const auto back = read("<ResultMultiGraph><Manager Type=\"Nobody::Knows\" Formula=\"{T}\"/>"
                           "<Items><Item Name=\"A\"><Value>1;2</Value></Item><Item Name=\"B\"><Value/></Item>"
                           "</Items></ResultMultiGraph>");
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->getManager(), nullptr);
    EXPECT_EQ(back->getState(), ResultState::Error);
    EXPECT_EQ(back->_items.at("A").getState(), ResultState::Error);
    // A curve without points stays Empty, and its points are kept where there are any.
    EXPECT_EQ(back->_items.at("B").getState(), ResultState::Empty);
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

TEST(ResultMultiGraphTypeConverterTest, ItemsAreReadTolerantly)
{
    const std::string type = Zem::TypeHelper::getTypeName(typeid(GraphTimeManager));
    const auto back =
        read("<ResultMultiGraph><Manager Type=\"" + type
             + "\"/><Items>text<Item Name=\"A\"><Value>2;1|x;3|4</Value></Item>"
               "<Item><Value>5;5</Value></Item>"
               "<Item Name=\"A\"><Value>7;7</Value></Item>"
               "<Item Name=\"C\"/>"
               "<Item Name=\"D\"><Other>1;1</Other><Value>3;1|</Value></Item></Items></ResultMultiGraph>");
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->_items.size(), 3u);
    // Of two items of one name the first counts.
    EXPECT_EQ(back->_items.at("A").getPointCollection(), (std::vector<Point>{{2.0, 1.0}}));
    EXPECT_TRUE(back->_items.at("C").getPointCollection().empty());
    EXPECT_EQ(back->_items.at("D").getPointCollection(), (std::vector<Point>{{3.0, 1.0}}));
    // "C" has no points, so the whole is Error.
    EXPECT_EQ(back->getState(), ResultState::Error);

    // Without Items the map is empty, which is Error too.
    const auto withoutItems = read("<ResultMultiGraph><Manager Type=\"" + type + "\"/></ResultMultiGraph>");
    ASSERT_NE(withoutItems, nullptr);
    EXPECT_TRUE(withoutItems->_items.empty());
    EXPECT_EQ(withoutItems->getState(), ResultState::Error);
    EXPECT_NE(withoutItems->getManager(), nullptr);
}

TEST(ResultMultiGraphTypeConverterTest, PointListTable)
{
    const double nan = std::nan("");
    struct Row {
        const char* text;
        std::vector<Point> expected;
    };
    const std::vector<Row> rows{
        {"", {}},
        {"1;2|x;3|4", {{1, 2}}},
        {"1;2|", {{1, 2}}},
        {"|1;2||3;4|", {{1, 2}, {3, 4}}},
        {"1;0.5|2;0.25", {{1, 0.5}, {2, 0.25}}},
        {"1;2;3", {}},
        {"1;", {}},
        {";1", {}},
        {"1 ;2", {}},
        {"1,5;2", {}},
        {"-1.5;2e3|nan;-inf", {{-1.5, 2000}, {nan, -std::numeric_limits<double>::infinity()}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const std::vector<Point> points = ResultMultiGraphTypeConverter::pointsFromText(row.text);
        ASSERT_EQ(points.size(), row.expected.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            EXPECT_TRUE(ZemTreeTest::sameNumber(points[i].x, row.expected[i].x)) << i;
            EXPECT_TRUE(ZemTreeTest::sameNumber(points[i].y, row.expected[i].y)) << i;
        }
    }
    EXPECT_EQ(ResultMultiGraphTypeConverter::pointsToText({}), "");
    EXPECT_EQ(ResultMultiGraphTypeConverter::pointsToText({{1.0, 0.5}, {1e-14, 1234.5}}), "1;0.5|0;1234.5");
}

} // namespace
