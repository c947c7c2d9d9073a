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
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Zem::Color;
using Zem::FiguresDrawManager;
using Zem::FiguresImage;
using Zem::PointF;
using Zem::PointsSequence;
using Figures = std::map<std::string, std::unique_ptr<Zem::Figure>>;

constexpr float Inf = std::numeric_limits<float>::infinity();
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr int Width = 800;
constexpr int Height = 600;

// A fresh folder under the system's temp folder, removed with everything in it at the end of the test.
class TempFolder {
public:
    TempFolder()
    {
        const std::string base = (fs::temp_directory_path() / "ztr_figures_").string();
        for (int i = 0;; ++i) {
            _path = base + std::to_string(i);
            if (fs::create_directory(_path))
                break;
        }
    }
    ~TempFolder()
    {
        std::error_code error;
        fs::remove_all(_path, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const fs::path& path() const { return _path; }

private:
    fs::path _path;
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

std::unique_ptr<Zem::Figure> sequence(std::vector<PointF> points, Color color, bool markers, bool lines)
{
    return std::make_unique<PointsSequence>(std::move(points), color, "", markers, lines);
}

FiguresImage render(const Figures& figures)
{
    return FiguresDrawManager::getInstance()->renderToPixels(figures, "I, A", "T, s", Width, Height);
}

struct Rgb {
    int r, g, b;
};

Rgb rgbAt(const FiguresImage& image, int x, int y)
{
    const std::uint32_t pixel = image.pixelAt(x, y);
    return {static_cast<int>((pixel >> 16) & 0xFFu), static_cast<int>((pixel >> 8) & 0xFFu),
            static_cast<int>(pixel & 0xFFu)};
}

bool isReddish(Rgb c)
{
    return c.r - c.g > 100 && c.r - c.b > 100;
}

bool isBluish(Rgb c)
{
    return c.b - c.r > 100 && c.b - c.g > 100;
}

// Whether some pixel within `radius` pixels of the data point (x, y) passes `test`.
bool anyNear(const FiguresImage& image, double x, double y, int radius, const std::function<bool(Rgb)>& test)
{
    const int centreX = static_cast<int>(std::lround(image.toPixelX(x)));
    const int centreY = static_cast<int>(std::lround(image.toPixelY(y)));
    for (int py = centreY - radius; py <= centreY + radius; ++py) {
        for (int px = centreX - radius; px <= centreX + radius; ++px) {
            if (px >= 0 && py >= 0 && px < image.width && py < image.height && test(rgbAt(image, px, py)))
                return true;
        }
    }
    return false;
}

TEST(FiguresDrawManagerTest, LineIsDrawnWhereTheDataLies)
{
    Figures figures;
    figures["line"] = sequence({{0, 0}, {10, 10}}, Color::Red(), false, true);
    const FiguresImage image = render(figures);
    ASSERT_EQ(image.width, Width);
    ASSERT_EQ(image.height, Height);
    for (const double t : {0.5, 2.0, 5.0, 7.5, 9.5}) {
        SCOPED_TRACE(t);
        EXPECT_TRUE(anyNear(image, t, t, 1, isReddish));
    }
    EXPECT_FALSE(anyNear(image, 2.0, 8.0, 3, isReddish));
    EXPECT_FALSE(anyNear(image, 8.0, 2.0, 3, isReddish));
    // The corners of the picture stay background.
    EXPECT_EQ(image.pixelAt(0, 0), 0xFFFFFFFFu);
    EXPECT_EQ(image.pixelAt(Width - 1, Height - 1), 0xFFFFFFFFu);
}

TEST(FiguresDrawManagerTest, NonFinitePointBreaksTheLine)
{
    for (const PointF gap : {PointF(NaN, NaN), PointF(Inf, 0), PointF(1.5f, -Inf), PointF(NaN, 0)}) {
        SCOPED_TRACE(std::to_string(gap.x) + ", " + std::to_string(gap.y));
        Figures figures;
        figures["line"] = sequence({{0, 0}, {1, 0}, gap, {2, 0}, {3, 1}}, Color::Red(), false, true);
        const FiguresImage image = render(figures);
        EXPECT_TRUE(std::isfinite(image.axisX.min) && std::isfinite(image.axisX.max));
        EXPECT_TRUE(anyNear(image, 0.5, 0.0, 1, isReddish));
        EXPECT_TRUE(anyNear(image, 2.5, 0.5, 1, isReddish));
        EXPECT_FALSE(anyNear(image, 1.5, 0.0, 3, isReddish));
    }
}

TEST(FiguresDrawManagerTest, MarkersWithoutLines)
{
    Figures figures;
    figures["points"] = sequence({{0, 0}, {10, 0}, {0, 10}, {10, 10}}, Color::Blue(), true, false);
    const FiguresImage image = render(figures);
    for (const PointF corner : {PointF(0, 0), PointF(10, 0), PointF(0, 10), PointF(10, 10)}) {
        SCOPED_TRACE(std::to_string(corner.x) + ", " + std::to_string(corner.y));
        EXPECT_TRUE(anyNear(image, corner.x, corner.y, 0, isBluish));
    }
    EXPECT_FALSE(anyNear(image, 5, 0, 3, isBluish));
    EXPECT_FALSE(anyNear(image, 5, 5, 3, isBluish));
}

// The legend stands to the right of the plot and shows a sample of each sequence in its colour.
TEST(FiguresDrawManagerTest, LegendSitsRightOfThePlot)
{
    const auto hasInkRightOfPlot = [](const FiguresImage& image, const std::function<bool(Rgb)>& test) {
        for (int y = static_cast<int>(image.plotTop); y < static_cast<int>(image.plotTop + image.plotHeight); ++y) {
            for (int x = static_cast<int>(image.plotLeft + image.plotWidth) + 2; x < image.width; ++x) {
                if (test(rgbAt(image, x, y)))
                    return true;
            }
        }
        return false;
    };
    Figures figures;
    figures["Форма характеристики сверху"] = sequence({{0, 0}, {1, 1}}, Color::Red(), false, true);
    const FiguresImage withLegend = render(figures);
    EXPECT_TRUE(hasInkRightOfPlot(withLegend, isReddish));
    EXPECT_TRUE(hasInkRightOfPlot(withLegend, [](Rgb c) { return c.r < 80 && c.g < 80 && c.b < 80; }));

    const FiguresImage withoutLegend = render(Figures());
    EXPECT_FALSE(hasInkRightOfPlot(withoutLegend, [](Rgb c) { return c.r < 200; }));
}

struct AxisRow {
    const char* name;
    std::function<void(Figures&)> fill;
    double dataMinX, dataMaxX, dataMinY, dataMaxY;     // what the axes must hold; NaN: nothing to hold
    double exactMinX, exactMaxX, exactMinY, exactMaxY; // NaN: not checked exactly
};

TEST(FiguresDrawManagerTest, AxesTable)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    const std::vector<AxisRow> rows = {
        {"no figures: 0..1", [](Figures&) {}, none, none, none, none, 0.0, 1.0, 0.0, 1.0},
        {"a sequence without points", [](Figures& f) { f["a"] = sequence({}, Color::Red(), true, true); }, none, none,
         none, none, 0.0, 1.0, 0.0, 1.0},
        {"only non-finite points",
         [](Figures& f) {
             f["a"] = sequence({{NaN, 1}, {Inf, 2}, {3, -Inf}}, Color::Red(), true, true);
         },
         none, none, none, none, 0.0, 1.0, 0.0, 1.0},
        {"five per cent margin",
         [](Figures& f) {
             f["a"] = sequence({{0, 0}, {10, 100}}, Color::Red(), true, true);
         },
         0, 10, 0, 100, -0.5, 10.5, -5, 105},
        {"a single point is widened around itself",
         [](Figures& f) {
             f["a"] = sequence({{-2.5f, 7}}, Color::Red(), true, false);
         },
         -2.5, -2.5, 7, 7, -2.75, -2.25, 6.3, 7.7},
        {"a single point at zero",
         [](Figures& f) {
             f["a"] = sequence({{0, 0}}, Color::Red(), true, false);
         },
         0, 0, 0, 0, -1, 1, -1, 1},
        {"NaN beside data",
         [](Figures& f) {
             f["a"] = sequence({{NaN, 50}, {0, 0}, {10, 10}}, Color::Red(), true, true);
         },
         0, 10, 0, 10, -0.5, 10.5, -0.5, 10.5},
        {"largest floats",
         [](Figures& f) {
             f["a"] = sequence({{-3e38f, -3e38f}, {3e38f, 3e38f}}, Color::Red(), true, true);
         },
         -3e38, 3e38, -3e38, 3e38, none, none, none, none},
        {"tiny values",
         [](Figures& f) {
             f["a"] = sequence({{1e-40f, 1e-40f}, {2e-40f, 3e-40f}}, Color::Red(), true, true);
         },
         1e-40, 2e-40, 1e-40, 3e-40, none, none, none, none},
        {"a tiny span far from zero",
         [](Figures& f) {
             f["a"] = sequence({{1000, 1}, {1000.0001f, 1.0000001f}}, Color::Red(), true, true);
         },
         1000, 1000.0001, 1, 1.0000001, none, none, none, none},
        {"a figure of another kind counts",
         [](Figures& f) {
             f["a"] = sequence({{0, 0}, {1, 1}}, Color::Red(), true, true);
             f["b"] = std::make_unique<Box>(5, 6, -2, -1);
         },
         0, 6, -2, 1, -0.3, 6.3, -2.15, 1.15},
        {"a null figure is ignored",
         [](Figures& f) {
             f["a"] = sequence({{0, 0}, {10, 10}}, Color::Red(), true, true);
             f["b"] = nullptr;
         },
         0, 10, 0, 10, -0.5, 10.5, -0.5, 10.5},
    };
    for (const AxisRow& row : rows) {
        SCOPED_TRACE(row.name);
        Figures figures;
        row.fill(figures);
        const FiguresImage image = render(figures);
        struct Check {
            const char* axis;
            const Zem::FiguresAxis& range;
            double dataMin, dataMax, exactMin, exactMax;
        };
        for (const Check& check : {Check{"x", image.axisX, row.dataMinX, row.dataMaxX, row.exactMinX, row.exactMaxX},
                                   Check{"y", image.axisY, row.dataMinY, row.dataMaxY, row.exactMinY, row.exactMaxY}}) {
            SCOPED_TRACE(check.axis);
            const Zem::FiguresAxis& axis = check.range;
            ASSERT_TRUE(std::isfinite(axis.min) && std::isfinite(axis.max));
            ASSERT_LT(axis.min, axis.max);
            if (!std::isnan(check.dataMin)) {
                EXPECT_LT(axis.min, check.dataMin);
                EXPECT_GT(axis.max, check.dataMax);
            }
            if (!std::isnan(check.exactMin)) {
                const double tolerance = (check.exactMax - check.exactMin) * 1e-6;
                EXPECT_NEAR(axis.min, check.exactMin, tolerance);
                EXPECT_NEAR(axis.max, check.exactMax, tolerance);
            }

            // Round ticks inside the axis, each labelled with a text that reads back as its value.
            ASSERT_GE(axis.ticks.size(), 2u);
            ASSERT_EQ(axis.labels.size(), axis.ticks.size());
            const double step = axis.ticks[1] - axis.ticks[0];
            // 1, 2 or 5 times a power of ten; a difference of doubles may fall just below the power.
            const double mantissa = step / std::pow(10.0, std::floor(std::log10(step)));
            EXPECT_TRUE(std::fabs(mantissa - 1) < 1e-6 || std::fabs(mantissa - 2) < 1e-6
                        || std::fabs(mantissa - 5) < 1e-6 || std::fabs(mantissa - 10) < 1e-5)
                << "step " << step;
            for (std::size_t i = 0; i < axis.ticks.size(); ++i) {
                SCOPED_TRACE(axis.labels[i]);
                EXPECT_GE(axis.ticks[i], axis.min);
                EXPECT_LE(axis.ticks[i], axis.max);
                if (i > 0) {
                    EXPECT_NEAR(axis.ticks[i] - axis.ticks[i - 1], step, step * 1e-6);
                }
                EXPECT_FALSE(axis.labels[i][0] == '-' && axis.labels[i].find_first_not_of("-0.") == std::string::npos);
                std::istringstream text(axis.labels[i]);
                text.imbue(std::locale::classic());
                double parsed = std::numeric_limits<double>::quiet_NaN();
                text >> parsed;
                EXPECT_TRUE(text.eof() && !text.fail());
                EXPECT_NEAR(parsed, axis.ticks[i], step * 1e-3);
            }
        }
    }
}

// A user locale with a decimal comma must not reach the labels.
TEST(FiguresDrawManagerTest, LabelsIgnoreTheGlobalLocale)
{
    struct CommaPunct : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return ' '; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new CommaPunct));
    Figures figures;
    figures["a"] = sequence({{-0.8f, 1000}, {0.8f, 9000}}, Color::Red(), true, true);
    const FiguresImage image = render(figures);
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

// Checks the signature and the header chunk of a PNG file, and gives its width and height.
void expectPng(const fs::path& path, int width, int height)
{
    const std::vector<unsigned char> bytes = readFile(path);
    ASSERT_GT(bytes.size(), 33u);
    const std::vector<unsigned char> signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    EXPECT_TRUE(std::equal(signature.begin(), signature.end(), bytes.begin()));
    EXPECT_EQ(std::string(bytes.begin() + 12, bytes.begin() + 16), "IHDR");
    EXPECT_EQ(bigEndian(bytes, 16), static_cast<std::uint32_t>(width));
    EXPECT_EQ(bigEndian(bytes, 20), static_cast<std::uint32_t>(height));
    const std::string tail(bytes.end() - 8, bytes.end() - 4);
    EXPECT_EQ(tail, "IEND");
}

// Puts the default size back whatever a test did.
struct SizeGuard {
    ~SizeGuard() { FiguresDrawManager::getInstance()->setImageSize(Width, Height); }
};

TEST(FiguresDrawManagerTest, SaveWritesAPngOfTheSetSize)
{
    const TempFolder temp;
    const SizeGuard guard;
    FiguresDrawManager* const manager = FiguresDrawManager::getInstance();
    Figures figures;
    figures["a"] = sequence({{0, 0}, {1, 2}}, Color::Blue(), true, true);

    const fs::path first = temp.path() / "default.png";
    manager->saveToImage(first.string(), figures, "x", "y");
    expectPng(first, FiguresDrawManager::DefaultWidth, FiguresDrawManager::DefaultHeight);

    manager->setImageSize(320, 1000);
    const fs::path second = temp.path() / "tall.png";
    manager->saveToImage(second.string(), figures, "x", "y");
    expectPng(second, 320, 1000);

    // An existing file is replaced.
    manager->saveToImage(first.string(), figures, "x", "y");
    expectPng(first, 320, 1000);
}

TEST(FiguresDrawManagerTest, SizeOutOfRangeIsRefused)
{
    const SizeGuard guard;
    FiguresDrawManager* const manager = FiguresDrawManager::getInstance();
    manager->setImageSize(500, 400);
    for (const auto& size : std::vector<std::pair<int, int>>{{0, 400}, {500, -1}, {100000, 400}, {500, 63}}) {
        SCOPED_TRACE(std::to_string(size.first) + "x" + std::to_string(size.second));
        EXPECT_THROW(manager->setImageSize(size.first, size.second), std::logic_error);
        EXPECT_EQ(manager->getImageWidth(), 500);
        EXPECT_EQ(manager->getImageHeight(), 400);
    }
}

TEST(FiguresDrawManagerTest, UnwritablePathThrowsWithThePath)
{
    const TempFolder temp;
    Figures figures;
    figures["a"] = sequence({{0, 0}, {1, 2}}, Color::Blue(), true, true);
    for (const fs::path& path : {temp.path() / "missing" / "a.png", temp.path(), fs::path()}) {
        SCOPED_TRACE(path.string());
        try {
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
        std::function<void(Figures&)> fill;
        std::string horizontal, vertical;
    };
    const std::vector<Row> rows = {
        {"empty", [](Figures&) {}, "", ""},
        {"single point",
         [](Figures& f) {
             f["p"] = sequence({{1, 1}}, Color::Red(), true, true);
         },
         "x", "y"},
        {"all NaN",
         [](Figures& f) {
             f["p"] = sequence({{NaN, NaN}, {NaN, 1}}, Color::Red(), true, true);
         },
         "x", "y"},
        {"infinities",
         [](Figures& f) {
             f["p"] = sequence({{-Inf, Inf}, {Inf, -Inf}, {0, 1}}, Color::Red(), true, true);
         },
         "x", "y"},
        {"extremes",
         [](Figures& f) {
             f["p"] = sequence({{-3.4e38f, 1.4e-45f}, {3.4e38f, 3e-45f}}, Color::Red(), true, true);
         },
         "x", "y"},
        {"Russian keys and captions",
         [](Figures& f) {
             f["Форма характеристики снизу"] = sequence({{0, 0}, {1, 1}}, Color::Red(), false, true);
             f["Форма характеристики сверху"] = sequence({{0, 1}, {1, 2}}, Color::Green(), false, true);
         },
         "R, Ом", "X, Ом"},
        {"malformed UTF-8",
         [](Figures& f) {
             f["\xFF\xC3(\xE2\x82"] = sequence({{0, 0}}, Color::Red(), true, true);
         },
         "\xC0\xAF", std::string("a\0b", 3)},
        {"long texts",
         [](Figures& f) {
             f[std::string(500, 'W')] = sequence({{0, 0}, {1, 1}}, Color::Red(), true, true);
         },
         std::string(2000, 'x'), std::string(2000, 'y')},
        {"many keys",
         [](Figures& f) {
             for (int i = 0; i < 120; ++i)
                 f["curve " + std::to_string(i)] =
                     sequence({{float(i), 0}, {float(i), 1}}, Color(i, 255 - i, 0), i % 2 == 0, i % 3 == 0);
         },
         "x", "y"},
        {"another kind of figure only", [](Figures& f) { f["b"] = std::make_unique<Box>(-1, 1, -Inf, NaN); }, "x", "y"},
        {"transparent colour",
         [](Figures& f) {
             f["p"] = sequence({{0, 0}, {1, 1}}, Color::Transparent(), true, true);
         },
         "x", "y"},
    };
    const TempFolder temp;
    const SizeGuard guard;
    for (const int size : {FiguresDrawManager::MinSize, 800}) {
        FiguresDrawManager::getInstance()->setImageSize(size, size);
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name);
            SCOPED_TRACE(size);
            Figures figures;
            row.fill(figures);
            const fs::path path = temp.path() / "picture.png";
            FiguresDrawManager::getInstance()->saveToImage(path.string(), figures, row.horizontal, row.vertical);
            expectPng(path, size, size);
        }
    }
}

// Renders from two threads at once are serialised and both complete.
TEST(FiguresDrawManagerTest, ConcurrentRendersComplete)
{
    Figures figures;
    figures["a"] = sequence({{0, 0}, {10, 10}}, Color::Red(), false, true);
    FiguresImage first;
    FiguresImage second;
    std::thread other([&] { first = render(figures); });
    second = render(figures);
    other.join();
    EXPECT_EQ(first.pixels, second.pixels);
    EXPECT_TRUE(anyNear(first, 5, 5, 1, isReddish));
}

} // namespace
