#include "TemporaryFolder.h"
#include "core/common/FiguresDrawManager.h"
#include "core/common/PointsSequence.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <locale>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Zem::Color;
using Zem::FiguresDrawManager;
using Zem::FiguresImage;
using Zem::PointF;
using Figures = std::map<std::string, std::unique_ptr<Zem::Figure>>;

constexpr float Inf = std::numeric_limits<float>::infinity();
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr int Width = 800;
constexpr int Height = 600;

using TempFolder = ZemTreeTest::TemporaryFolder;

// Puts the default size back whatever a test did.
struct SizeGuard {
    ~SizeGuard() { FiguresDrawManager::getInstance()->setImageSize(Width, Height); }
};

// A figure of another kind: not drawn, but its range must still be made room for.
class Box : public Zem::Figure {
public:
    Box(float minX, float maxX, float minY, float maxY) : _minX(minX), _maxX(maxX), _minY(minY), _maxY(maxY) {}
    void getRangeX(float& min, float& max) const override
    {
        min = std::min(min, _minX);
        max = std::max(max, _maxX);
    }
    void getRangeY(float& min, float& max) const override
    {
        min = std::min(min, _minY);
        max = std::max(max, _maxY);
    }

private:
    float _minX, _maxX, _minY, _maxY;
};

Figures single(std::vector<PointF> points, bool markers = true)
{
    Figures figures;
    figures["a"] = std::make_unique<Zem::PointsSequence>(std::move(points), Color::Red(), "", markers, !markers);
    return figures;
}

FiguresImage render(const Figures& figures)
{
    return FiguresDrawManager::getInstance()->renderToPixels(figures, "I, A", "T, s", Width, Height);
}

// Whether some pixel within `radius` pixels of the data point (x, y) is clearly red.
bool redNear(const FiguresImage& image, double x, double y, int radius)
{
    const int centreX = static_cast<int>(std::lround(image.toPixelX(x)));
    const int centreY = static_cast<int>(std::lround(image.toPixelY(y)));
    for (int py = std::max(0, centreY - radius); py <= std::min(image.height - 1, centreY + radius); ++py) {
        for (int px = std::max(0, centreX - radius); px <= std::min(image.width - 1, centreX + radius); ++px) {
            const std::uint32_t pixel = image.pixelAt(px, py);
            const int r = (pixel >> 16) & 0xFF, g = (pixel >> 8) & 0xFF, b = pixel & 0xFF;
            if (r - g > 100 && r - b > 100)
                return true;
        }
    }
    return false;
}

TEST(FiguresDrawManagerTest, LineIsDrawnWhereTheDataLiesAndBreaksAtNonFinitePoints)
{
    const FiguresImage image = render(single({{0, 0}, {10, 10}}, false));
    ASSERT_EQ(image.width, Width);
    ASSERT_EQ(image.height, Height);
    for (const double t : {0.5, 5.0, 9.5})
        EXPECT_TRUE(redNear(image, t, t, 1)) << t;
    EXPECT_FALSE(redNear(image, 2.0, 8.0, 3));
    EXPECT_EQ(image.pixelAt(0, 0), 0xFFFFFFFFu);

    for (const PointF gap : {PointF(Inf, 0), PointF(NaN, 0)}) {
        SCOPED_TRACE(std::to_string(gap.x));
        const FiguresImage broken = render(single({{0, 0}, {1, 0}, gap, {2, 0}, {3, 1}}, false));
        EXPECT_TRUE(redNear(broken, 0.5, 0.0, 1));
        EXPECT_TRUE(redNear(broken, 2.5, 0.5, 1));
        EXPECT_FALSE(redNear(broken, 1.5, 0.0, 3));
    }
}

TEST(FiguresDrawManagerTest, AxesHoldTheDataWithRoundTicks)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    struct Row {
        const char* name;
        std::function<Figures()> make;
        double dataMinX, dataMaxX, dataMinY, dataMaxY;     // what the axes must hold; NaN: nothing to hold
        double exactMinX, exactMaxX, exactMinY, exactMaxY; // NaN: not checked exactly
    };
    const std::vector<Row> rows = {
        {"no figures: 0..1", [] { return Figures(); }, none, none, none, none, 0.0, 1.0, 0.0, 1.0},
        {"only non-finite points",
         [] {
             return single({{NaN, 1}, {Inf, 2}, {3, -Inf}});
         },
         none, none, none, none, 0.0, 1.0, 0.0, 1.0},
        {"five per cent margin",
         [] {
             return single({{0, 0}, {10, 100}});
         },
         0, 10, 0, 100, -0.5, 10.5, -5, 105},
        {"a single point is widened around itself",
         [] {
             return single({{-2.5f, 7}});
         },
         -2.5, -2.5, 7, 7, -2.75, -2.25, 6.3, 7.7},
        {"largest floats",
         [] {
             return single({{-3e38f, -3e38f}, {3e38f, 3e38f}});
         },
         -3e38, 3e38, -3e38, 3e38, none, none, none, none},
        {"a tiny span far from zero",
         [] {
             return single({{1000, 1}, {1000.0001f, 1.0000001f}});
         },
         1000, 1000.0001, 1, 1.0000001, none, none, none, none},
        {"a figure of another kind counts, a null one not",
         [] {
             Figures figures = single({{0, 0}, {1, 1}});
             figures["b"] = std::make_unique<Box>(5, 6, -2, -1);
             figures["c"] = nullptr;
             return figures;
         },
         0, 6, -2, 1, -0.3, 6.3, -2.15, 1.15},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const FiguresImage image = render(row.make());
        struct Check {
            const Zem::FiguresAxis& axis;
            double dataMin, dataMax, exactMin, exactMax;
        };
        for (const Check& check : {Check{image.axisX, row.dataMinX, row.dataMaxX, row.exactMinX, row.exactMaxX},
                                   Check{image.axisY, row.dataMinY, row.dataMaxY, row.exactMinY, row.exactMaxY}}) {
            const Zem::FiguresAxis& axis = check.axis;
            ASSERT_TRUE(std::isfinite(axis.min) && std::isfinite(axis.max));
            ASSERT_LT(axis.min, axis.max);
            if (!std::isnan(check.dataMin)) {
                EXPECT_LT(axis.min, check.dataMin);
                EXPECT_GT(axis.max, check.dataMax);
            }
            if (!std::isnan(check.exactMin)) {
                EXPECT_NEAR(axis.min, check.exactMin, (check.exactMax - check.exactMin) * 1e-6);
                EXPECT_NEAR(axis.max, check.exactMax, (check.exactMax - check.exactMin) * 1e-6);
            }

            // Ticks 1, 2 or 5 times a power of ten apart, inside the axis, each labelled with its value.
            ASSERT_GE(axis.ticks.size(), 2u);
            ASSERT_EQ(axis.labels.size(), axis.ticks.size());
            const double step = axis.ticks[1] - axis.ticks[0];
            const double mantissa = step / std::pow(10.0, std::floor(std::log10(step)));
            EXPECT_TRUE(std::fabs(mantissa - 1) < 1e-6 || std::fabs(mantissa - 2) < 1e-6
                        || std::fabs(mantissa - 5) < 1e-6 || std::fabs(mantissa - 10) < 1e-5)
                << "step " << step;
            for (std::size_t i = 0; i < axis.ticks.size(); ++i) {
                SCOPED_TRACE(axis.labels[i]);
                EXPECT_GE(axis.ticks[i], axis.min);
                EXPECT_LE(axis.ticks[i], axis.max);
                std::istringstream text(axis.labels[i]);
                text.imbue(std::locale::classic());
                double parsed = none;
                text >> parsed;
                EXPECT_TRUE(text.eof() && !text.fail());
                EXPECT_NEAR(parsed, axis.ticks[i], step * 1e-3);
            }
        }
    }
}

// A user locale with a decimal comma must not reach the labels, and zero is never "-0".
TEST(FiguresDrawManagerTest, LabelsIgnoreTheGlobalLocale)
{
    struct CommaPunct : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return ' '; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new CommaPunct));
    const FiguresImage image = render(single({{-0.8f, 1000}, {0.8f, 9000}}));
    std::locale::global(previous);

    bool hasZero = false;
    bool hasFraction = false;
    for (const std::string& label : image.axisX.labels) {
        EXPECT_EQ(label.find(','), std::string::npos) << label;
        EXPECT_NE(label, "-0");
        hasZero = hasZero || label == "0";
        hasFraction = hasFraction || label.find('.') != std::string::npos;
    }
    EXPECT_TRUE(hasZero);
    EXPECT_TRUE(hasFraction);
    for (const std::string& label : image.axisY.labels)
        EXPECT_EQ(label.find_first_of(", "), std::string::npos) << label;
}

// Checks the signature and the header chunk of a PNG file.
void expectPng(const fs::path& path, int width, int height)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<unsigned char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    ASSERT_GT(bytes.size(), 33u);
    const auto bigEndian = [&bytes](std::size_t at) {
        return (std::uint32_t(bytes[at]) << 24) | (std::uint32_t(bytes[at + 1]) << 16)
               | (std::uint32_t(bytes[at + 2]) << 8) | std::uint32_t(bytes[at + 3]);
    };
    EXPECT_EQ(std::string(bytes.begin() + 1, bytes.begin() + 4), "PNG");
    EXPECT_EQ(std::string(bytes.begin() + 12, bytes.begin() + 16), "IHDR");
    EXPECT_EQ(bigEndian(16), static_cast<std::uint32_t>(width));
    EXPECT_EQ(bigEndian(20), static_cast<std::uint32_t>(height));
    EXPECT_EQ(std::string(bytes.end() - 8, bytes.end() - 4), "IEND");
}

TEST(FiguresDrawManagerTest, SaveWritesAPngOfTheSetSizeAndRefusesBadSizes)
{
    const TempFolder temp;
    const SizeGuard guard;
    FiguresDrawManager* const manager = FiguresDrawManager::getInstance();
    Figures figures = single({{0, 0}, {1, 2}});

    manager->saveToImage((temp.path() / "default.png").string(), figures, "x", "y");
    expectPng(temp.path() / "default.png", FiguresDrawManager::DefaultWidth, FiguresDrawManager::DefaultHeight);
    manager->setImageSize(320, 1000);
    manager->saveToImage((temp.path() / "tall.png").string(), figures, "x", "y");
    expectPng(temp.path() / "tall.png", 320, 1000);

    for (const auto& size : std::vector<std::pair<int, int>>{{0, 400}, {100000, 400}, {500, 63}}) {
        SCOPED_TRACE(std::to_string(size.first) + "x" + std::to_string(size.second));
        EXPECT_THROW(manager->setImageSize(size.first, size.second), std::logic_error);
        EXPECT_EQ(manager->getImageWidth(), 320);
        EXPECT_EQ(manager->getImageHeight(), 1000);
    }
}

TEST(FiguresDrawManagerTest, UnwritablePathThrowsWithThePath)
{
    const TempFolder temp;
    for (const fs::path& path : {temp.path() / "missing" / "a.png", temp.path(), fs::path()}) {
        SCOPED_TRACE(path.string());
        try {
            Figures figures = single({{0, 0}});
            FiguresDrawManager::getInstance()->saveToImage(path.string(), figures, "x", "y");
            ADD_FAILURE() << "no exception";
        }
        catch (const std::runtime_error& error) {
            EXPECT_NE(std::string(error.what()).find("\"" + path.string() + "\""), std::string::npos) << error.what();
        }
    }
    EXPECT_FALSE(fs::exists(temp.path() / "missing"));
}

// Whatever the figures and texts, a picture is written.
TEST(FiguresDrawManagerTest, HostileInputStillGivesAPicture)
{
    struct Row {
        const char* name;
        std::function<Figures()> make;
        std::string horizontal, vertical;
    };
    const std::vector<Row> rows = {
        {"infinities",
         [] {
             return single({{-Inf, Inf}, {Inf, -Inf}, {0, 1}});
         },
         "x", "y"},
        {"extremes",
         [] {
             return single({{-3.4e38f, 1.4e-45f}, {3.4e38f, 3e-45f}});
         },
         "x", "y"},
        {"malformed UTF-8",
         [] {
             Figures figures;
             figures["\xFF\xC3(\xE2\x82"] = std::move(single({{0, 0}})["a"]);
             return figures;
         },
         "\xC0\xAF", std::string("a\0b", 3)},
        {"many keys",
         [] {
             Figures figures;
             for (int i = 0; i < 120; ++i)
                 figures["curve " + std::to_string(i)] =
                     std::move(single({{float(i), 0}, {float(i), 1}}, i % 2 == 0)["a"]);
             return figures;
         },
         "x", "y"},
    };
    const TempFolder temp;
    const SizeGuard guard;
    const int size = FiguresDrawManager::MinSize;
    FiguresDrawManager::getInstance()->setImageSize(size, size);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const fs::path path = temp.path() / "picture.png";
        Figures figures = row.make();
        FiguresDrawManager::getInstance()->saveToImage(path.string(), figures, row.horizontal, row.vertical);
        expectPng(path, size, size);
    }
}

// Renders from two threads at once are serialised and both complete.
TEST(FiguresDrawManagerTest, ConcurrentRendersComplete)
{
    const Figures figures = single({{0, 0}, {10, 10}}, false);
    FiguresImage first;
    std::thread other([&] { first = render(figures); });
    const FiguresImage second = render(figures);
    other.join();
    EXPECT_EQ(first.pixels, second.pixels);
    EXPECT_TRUE(redNear(first, 5, 5, 1));
}

using Zem::PointsSequence;

PointsSequence makeSequence(std::vector<PointF> points)
{
    return PointsSequence(std::move(points), Zem::Color::Blue(), "", true, false);
}

struct RangeRow {
    const char* name;
    std::vector<PointF> points;
    float min, max;                 // the range handed in
    float expectedMin, expectedMax; // along x; y is checked on the transposed points
};

TEST(PointsSequenceTest, RangesWidenWhatTheyAreGiven)
{
    const std::vector<RangeRow> rows = {
        {"empty leaves a normal range", {}, -2.0f, 5.0f, -2.0f, 5.0f},
        {"from an empty range", {{3, 0}, {-1, 0}, {2, 0}}, Inf, -Inf, -1.0f, 3.0f},
        {"only the max side widens", {{3, 0}, {12, 0}}, -10.0f, 10.0f, -10.0f, 12.0f},
        // The min test comes first for each point, so an inverted (min > max) incoming range still collapses
        // onto the points.
        {"inverted finite range", {{4, 0}}, 100.0f, -100.0f, 4.0f, 4.0f},
        {"NaN never enters", {{NaN, 0}, {1, 0}, {NaN, 0}}, Inf, -Inf, 1.0f, 1.0f},
        {"infinity enters", {{Inf, 0}, {-Inf, 0}, {1, 0}}, 0.0f, 1.0f, -Inf, Inf},
    };
    for (const RangeRow& row : rows) {
        SCOPED_TRACE(row.name);
        float minX = row.min;
        float maxX = row.max;
        makeSequence(row.points).getRangeX(minX, maxX);
        EXPECT_EQ(minX, row.expectedMin);
        EXPECT_EQ(maxX, row.expectedMax);

        std::vector<PointF> transposed;
        for (const PointF& point : row.points)
            transposed.emplace_back(point.y, point.x);
        float minY = row.min;
        float maxY = row.max;
        makeSequence(transposed).getRangeY(minY, maxY);
        EXPECT_EQ(minY, row.expectedMin);
        EXPECT_EQ(maxY, row.expectedMax);
    }
}

} // namespace
