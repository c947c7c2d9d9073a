// Graph results drawn into report pictures: the figures of the managers go through the drawing service as a
// result unit hands them over. With ZTR_GRAPH_IMAGE set to a path, the time characteristic is also saved there
// (this is how the picture of the README is made).

#include "GraphTestHelper.h"
#include "core/common/FiguresDrawManager.h"
#include "core/tree/Measure.h"
#include "core/tree/Measures.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/GraphZPhiManager.h"

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
using Figures = std::map<std::string, std::unique_ptr<Zem::Figure>>;

constexpr int Width = 800;
constexpr int Height = 600;

// The standard inverse characteristic with an operating current of 1 A and a time multiplier of 0.1.
double standardInverse(double current)
{
    return 0.1 * 0.14 / (std::pow(current, 0.02) - 1.0);
}

// A time manager for the characteristic, its band of ±10 % as setting lines, and two measured curves.
struct TimePicture {
    std::shared_ptr<ZemTree::GraphTimeManager> manager;
    std::map<std::string, std::vector<Point>> points;
};

TimePicture timePicture()
{
    TimePicture picture;
    picture.manager = std::make_shared<ZemTree::GraphTimeManager>("I", ZemTree::Measures::Ampere(), nullptr);
    picture.manager->setFormula("{T}*0.14/(({x}/{I})^0.02-1)");
    picture.manager->setTOperate(0.1);
    std::vector<PointF> up;
    std::vector<PointF> down;
    for (double current = 2.0; current <= 20.0; current += 0.5) {
        up.emplace_back(static_cast<float>(current), static_cast<float>(standardInverse(current) * 1.1));
        down.emplace_back(static_cast<float>(current), static_cast<float>(standardInverse(current) * 0.9));
    }
    picture.manager->setSettingsFigures(up, Zem::Color::Red(), down, Zem::Color::Orange());
    for (const double current : {2.0, 3.0, 5.0, 8.0, 12.0, 20.0}) {
        picture.points["Phase A"].emplace_back(current, standardInverse(current) * 1.03);
        picture.points["Phase B"].emplace_back(current, standardInverse(current) * 0.97);
    }
    return picture;
}

// The captions as a report writes them: "T, s" and "I, A".
std::string caption(const std::string& description, ZemTree::Measure* measure)
{
    return measure == nullptr ? description : description + ", " + measure->getDescription();
}

struct Rgb {
    int r, g, b;
};

Rgb rgbAt(const Zem::FiguresImage& image, int x, int y)
{
    const std::uint32_t pixel = image.pixelAt(x, y);
    return {static_cast<int>((pixel >> 16) & 0xFFu), static_cast<int>((pixel >> 8) & 0xFFu),
            static_cast<int>(pixel & 0xFFu)};
}

template <class Test> bool anyNear(const Zem::FiguresImage& image, double x, double y, int radius, Test test)
{
    const int centreX = static_cast<int>(std::lround(image.toPixelX(x)));
    const int centreY = static_cast<int>(std::lround(image.toPixelY(y)));
    for (int py = centreY - radius; py <= centreY + radius; ++py)
        for (int px = centreX - radius; px <= centreX + radius; ++px)
            if (px >= 0 && py >= 0 && px < image.width && py < image.height && test(rgbAt(image, px, py)))
                return true;
    return false;
}

bool isBluish(Rgb c)
{
    return c.b - c.r > 100 && c.b - c.g > 100;
}

bool isReddish(Rgb c)
{
    return c.r - c.g > 100 && c.r - c.b > 100;
}

std::vector<unsigned char> readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::vector<unsigned char>(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::uint32_t bigEndian(const std::vector<unsigned char>& bytes, std::size_t at)
{
    return (std::uint32_t(bytes[at]) << 24) | (std::uint32_t(bytes[at + 1]) << 16) | (std::uint32_t(bytes[at + 2]) << 8)
           | std::uint32_t(bytes[at + 3]);
}

void expectPng(const fs::path& path, int width, int height)
{
    const std::vector<unsigned char> bytes = readFile(path);
    ASSERT_GT(bytes.size(), 33u);
    const std::vector<unsigned char> signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    EXPECT_TRUE(std::equal(signature.begin(), signature.end(), bytes.begin()));
    EXPECT_EQ(std::string(bytes.begin() + 12, bytes.begin() + 16), "IHDR");
    EXPECT_EQ(bigEndian(bytes, 16), static_cast<std::uint32_t>(width));
    EXPECT_EQ(bigEndian(bytes, 20), static_cast<std::uint32_t>(height));
}

// A file path in the temp folder, removed at the end of the test.
class TempFile {
public:
    explicit TempFile(const std::string& name)
        : _path(fs::temp_directory_path() / (name + "_" + std::to_string(::getpid()) + ".png"))
    {
    }
    ~TempFile()
    {
        std::error_code error;
        fs::remove(_path, error);
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const fs::path& path() const { return _path; }

private:
    fs::path _path;
};

TEST(GraphRenderTest, TimeCharacteristicIsDrawnWhereItLies)
{
    TimePicture picture = timePicture();
    Figures figures;
    std::shared_ptr<ZemTree::GraphDataHeader> header;
    picture.manager->getFigures(picture.points, figures, header);
    ASSERT_NE(header, nullptr);
    const std::string horizontal = caption(header->getDescriptionX(), header->getMeasureX());
    const std::string vertical = caption(header->getDescriptionY(), header->getMeasureY());
    EXPECT_EQ(vertical, "T, " + ZemTree::Measures::Second()->getDescription());

    const Zem::FiguresImage image =
        Zem::FiguresDrawManager::getInstance()->renderToPixels(figures, horizontal, vertical, Width, Height);
    ASSERT_EQ(image.width, Width);
    ASSERT_EQ(image.height, Height);
    // The measured points are blue markers, the upper edge of the band a red line between its corners.
    for (const Point& point : picture.points.at("Phase A")) {
        SCOPED_TRACE(point.x);
        EXPECT_TRUE(anyNear(image, point.x, point.y, 1, isBluish));
    }
    for (const double current : {2.25, 4.25, 9.25, 15.25}) {
        SCOPED_TRACE(current);
        EXPECT_TRUE(anyNear(image, current, standardInverse(current) * 1.1, 2, isReddish));
    }
    // Far from the curves the plot stays clear of both colours.
    EXPECT_FALSE(anyNear(image, 15.0, standardInverse(2.0), 3, isBluish));
    EXPECT_FALSE(anyNear(image, 15.0, standardInverse(2.0), 3, isReddish));

    const TempFile file("ztr_time_characteristic");
    Zem::FiguresDrawManager* drawer = Zem::FiguresDrawManager::getInstance();
    drawer->saveToImage(file.path().string(), figures, horizontal, vertical);
    expectPng(file.path(), drawer->getImageWidth(), drawer->getImageHeight());

    if (const char* target = std::getenv("ZTR_GRAPH_IMAGE")) {
        drawer->saveToImage(target, figures, horizontal, vertical);
        EXPECT_LT(fs::file_size(target), 100u * 1024u);
    }
}

TEST(GraphRenderTest, ZPlaneFigureIsDrawnWhereItLies)
{
    auto manager = std::make_shared<ZemTree::GraphZPhiManager>();
    std::vector<PointF> zone{{-2.0f, -1.0f}, {8.0f, -1.0f}, {10.0f, 12.0f}, {-4.0f, 10.0f}};
    std::vector<PointF> hole{{-1.0f, -0.5f}, {1.0f, -0.5f}, {1.0f, 1.0f}, {-1.0f, 1.0f}};
    manager->setSettingsFigures(zone, Zem::Color::Red(), hole, Zem::Color::Orange());
    const std::map<std::string, std::vector<Point>> points{{"Zone 1", {{3.0, 4.0}, {6.0, 2.0}, {-2.0, 8.0}}}};
    Figures figures;
    std::shared_ptr<ZemTree::GraphDataHeader> header;
    manager->getFigures(points, figures, header);
    const std::string horizontal = caption(header->getDescriptionX(), header->getMeasureX());
    const std::string vertical = caption(header->getDescriptionY(), header->getMeasureY());

    const Zem::FiguresImage image =
        Zem::FiguresDrawManager::getInstance()->renderToPixels(figures, horizontal, vertical, Width, Height);
    for (const Point& point : points.at("Zone 1")) {
        SCOPED_TRACE(point.x);
        EXPECT_TRUE(anyNear(image, point.x, point.y, 1, isBluish));
    }
    // The zone's edge from (8, -1) to (10, 12) is a red line; its middle lies at (9, 5.5).
    EXPECT_TRUE(anyNear(image, 9.0, 5.5, 2, isReddish));
    EXPECT_FALSE(anyNear(image, 4.0, 8.0, 3, isReddish));

    const TempFile file("ztr_z_plane");
    Zem::FiguresDrawManager* drawer = Zem::FiguresDrawManager::getInstance();
    drawer->saveToImage(file.path().string(), figures, horizontal, vertical);
    expectPng(file.path(), drawer->getImageWidth(), drawer->getImageHeight());
}

} // namespace
