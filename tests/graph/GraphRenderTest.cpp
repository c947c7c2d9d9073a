// Graph results drawn into report pictures: the figures of the managers go through the drawing service as a
// result unit hands them over. With ZTR_GRAPH_IMAGE set to a path, the time characteristic is also saved there
// (this is how the picture of the README is made).

#include "core/common/FiguresDrawManager.h"
#include "core/common/PointsSequence.h"
#include "core/tree/Measure.h"
#include "core/tree/Measures.h"
#include "core/tree/TreeLocalization.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphManagerHelper.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Zem::Point;
using Zem::PointF;

// The standard inverse characteristic with an operating current of 1 A and a time multiplier of 0.1.
double standardInverse(double current)
{
    return 0.1 * 0.14 / (std::pow(current, 0.02) - 1.0);
}

int channel(std::uint32_t pixel, int shift)
{
    return static_cast<int>((pixel >> shift) & 0xFFu);
}

bool isBluish(std::uint32_t pixel)
{
    return channel(pixel, 0) - channel(pixel, 16) > 100 && channel(pixel, 0) - channel(pixel, 8) > 100;
}

bool isReddish(std::uint32_t pixel)
{
    return channel(pixel, 16) - channel(pixel, 8) > 100 && channel(pixel, 16) - channel(pixel, 0) > 100;
}

// Whether a pixel within `radius` of the point (x, y) passes `test`.
template <class Test> bool anyNear(const Zem::FiguresImage& image, double x, double y, int radius, Test test)
{
    const int centreX = static_cast<int>(std::lround(image.toPixelX(x)));
    const int centreY = static_cast<int>(std::lround(image.toPixelY(y)));
    for (int py = std::max(0, centreY - radius); py <= std::min(image.height - 1, centreY + radius); ++py)
        for (int px = std::max(0, centreX - radius); px <= std::min(image.width - 1, centreX + radius); ++px)
            if (test(image.pixelAt(px, py)))
                return true;
    return false;
}

// A time manager for the characteristic with its band of ±10 % as setting lines, and two measured curves.
TEST(GraphRenderTest, TimeCharacteristicIsDrawnWhereItLies)
{
    ZemTree::GraphTimeManager manager("I", ZemTree::Measures::Ampere(), nullptr);
    manager.setFormula("{T}*0.14/(({x}/{I})^0.02-1)");
    manager.setTOperate(0.1);
    std::vector<PointF> up;
    std::vector<PointF> down;
    for (double current = 2.0; current <= 20.0; current += 0.5) {
        up.emplace_back(static_cast<float>(current), static_cast<float>(standardInverse(current) * 1.1));
        down.emplace_back(static_cast<float>(current), static_cast<float>(standardInverse(current) * 0.9));
    }
    manager.setSettingsFigures(up, Zem::Color::Red(), down, Zem::Color::Orange());
    std::map<std::string, std::vector<Point>> points;
    for (const double current : {2.0, 3.0, 5.0, 8.0, 12.0, 20.0}) {
        points["Phase A"].emplace_back(current, standardInverse(current) * 1.03);
        points["Phase B"].emplace_back(current, standardInverse(current) * 0.97);
    }

    std::map<std::string, std::unique_ptr<Zem::Figure>> figures;
    std::shared_ptr<ZemTree::GraphDataHeader> header;
    manager.getFigures(points, figures, header);
    ASSERT_NE(header, nullptr);
    // The captions as a report writes them: "I, A" and "T, s".
    const std::string horizontal = "I, " + header->getMeasureX()->getDescription();
    const std::string vertical = "T, " + header->getMeasureY()->getDescription();

    Zem::FiguresDrawManager* drawer = Zem::FiguresDrawManager::getInstance();
    const Zem::FiguresImage image = drawer->renderToPixels(figures, horizontal, vertical, 800, 600);
    ASSERT_EQ(image.width, 800);
    ASSERT_EQ(image.height, 600);
    // The measured points are blue markers, the upper edge of the band a red line between its corners.
    for (const Point& point : points.at("Phase A")) {
        SCOPED_TRACE(point.x);
        EXPECT_TRUE(anyNear(image, point.x, point.y, 1, isBluish));
    }
    for (const double current : {2.25, 9.25, 15.25}) {
        SCOPED_TRACE(current);
        EXPECT_TRUE(anyNear(image, current, standardInverse(current) * 1.1, 2, isReddish));
    }
    // Far from the curves the plot stays clear of both colours.
    EXPECT_FALSE(anyNear(image, 15.0, standardInverse(2.0), 3, isBluish));
    EXPECT_FALSE(anyNear(image, 15.0, standardInverse(2.0), 3, isReddish));

    const fs::path file = fs::temp_directory_path() / ("ztr_time_" + std::to_string(::getpid()) + ".png");
    drawer->saveToImage(file.string(), figures, horizontal, vertical);
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    std::error_code error;
    fs::remove(file, error);
    EXPECT_EQ(bytes.substr(0, 8), "\x89PNG\r\n\x1A\n");

    if (const char* target = std::getenv("ZTR_GRAPH_IMAGE")) {
        drawer->saveToImage(target, figures, horizontal, vertical);
        EXPECT_LT(fs::file_size(target), 100u * 1024u);
    }
}

// A zone is judged as a closed polygon, so its picture shows the edge from the last corner back to the first.
TEST(GraphRenderTest, ZonePolygonsAreDrawnClosed)
{
    ZemTree::GraphZPhiManager manager;
    std::vector<PointF> outer{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    std::vector<PointF> inner{{4, 4}, {6, 4}, {6, 6}};
    manager.setSettingsFigures(outer, Zem::Color::Red(), inner, Zem::Color::Red());
    std::map<std::string, std::unique_ptr<Zem::Figure>> figures;
    std::shared_ptr<ZemTree::GraphDataHeader> header;
    manager.getFigures({}, figures, header);

    const Zem::FiguresImage image = Zem::FiguresDrawManager::getInstance()->renderToPixels(figures, "R", "X", 600, 600);
    EXPECT_TRUE(anyNear(image, 5.0, 0.0, 2, isReddish)) << "the first edge";
    EXPECT_TRUE(anyNear(image, 0.0, 5.0, 2, isReddish)) << "the closing edge of the outer zone";
    EXPECT_TRUE(anyNear(image, 5.0, 5.0, 2, isReddish)) << "the closing edge of the inner zone";
    EXPECT_FALSE(anyNear(image, 2.0, 7.0, 3, isReddish));

    // The same corners as an open line keep their gap.
    std::map<std::string, std::unique_ptr<Zem::Figure>> open;
    open["line"] = std::make_unique<Zem::PointsSequence>(outer, Zem::Color::Red(), "", false, true);
    const Zem::FiguresImage openImage =
        Zem::FiguresDrawManager::getInstance()->renderToPixels(open, "R", "X", 600, 600);
    EXPECT_TRUE(anyNear(openImage, 5.0, 0.0, 2, isReddish));
    EXPECT_FALSE(anyNear(openImage, 0.0, 5.0, 2, isReddish));
}

// The two setting lines keep their fixed keys; the legend shows what each line is in the report's language.
TEST(GraphRenderTest, SettingLinesAreLabelledInTheCurrentLanguage)
{
    ZemTree::GraphTimeManager time("I", ZemTree::Measures::Ampere(), nullptr);
    ZemTree::GraphZPhiManager zone;
    const struct {
        const char* text;
        const ZemTree::IGraphManager* manager;
        const char* up;
        const char* down;
    } rows[] = {
        {"time", &time, "Graph.upperToleranceLimit", "Graph.lowerToleranceLimit"},
        {"zone", &zone, "Graph.outerZoneBound", "Graph.innerZoneBound"},
    };
    for (const auto& row : rows) {
        for (int language : {0, 1}) {
            SCOPED_TRACE(std::string(row.text) + " in language " + std::to_string(language));
            lng::language = language;
            EXPECT_EQ((std::map<std::string, std::string>{
                          {ZemTree::GraphManagerHelper::FigureKeyUp, lng::Tree::get(row.up)},
                          {ZemTree::GraphManagerHelper::FigureKeyDown, lng::Tree::get(row.down)}}),
                      row.manager->getFigureLabels());
        }
    }
    lng::language = 0;
}

} // namespace
