#pragma once

#include "core/common/Figure.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Zem {

// One axis of a picture: the values that its ends stand for, and its round ticks with their labels.
struct FiguresAxis {
    double min = 0.0;
    double max = 1.0;
    std::vector<double> ticks;
    std::vector<std::string> labels;
};

// A picture of figures rendered in memory: premultiplied ARGB32 pixels (0xAARRGGBB), row after row from the top,
// with the placement of the plot so that a data point can be found in it.
struct FiguresImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    FiguresAxis axisX;
    FiguresAxis axisY;
    // The plot area in pixels.
    double plotLeft = 0.0;
    double plotTop = 0.0;
    double plotWidth = 0.0;
    double plotHeight = 0.0;

    std::uint32_t pixelAt(int x, int y) const { return pixels[static_cast<std::size_t>(y) * width + x]; }
    // Where a data point falls, in pixel coordinates (not rounded).
    double toPixelX(double x) const { return plotLeft + (x - axisX.min) / (axisX.max - axisX.min) * plotWidth; }
    double toPixelY(double y) const { return plotTop + (axisY.max - y) / (axisY.max - axisY.min) * plotHeight; }
};

// Draws figures on one pair of axes into a PNG picture for reports: white background, axes scaled to the figures
// with a margin, tick labels at round numbers, a light grid, the two captions and a legend of the figures' keys.
// Only PointsSequence is drawn; other figures still widen the axes. NaN and infinite coordinates are skipped and
// break a line. A singleton, because the size of the pictures is a setting of the whole program.
// One render runs at a time: calls from several threads are serialised by a mutex, so a report may be made on
// any thread.
class FiguresDrawManager {
public:
    static constexpr int DefaultWidth = 800;
    static constexpr int DefaultHeight = 600;
    static constexpr int MinSize = 64;
    static constexpr int MaxSize = 8192;

    static FiguresDrawManager* getInstance();

    FiguresDrawManager(const FiguresDrawManager&) = delete;
    FiguresDrawManager& operator=(const FiguresDrawManager&) = delete;

    // The size in pixels of the pictures that saveToImage writes. Throws std::logic_error, and keeps the old size,
    // when a side is outside [MinSize, MaxSize].
    void setImageSize(int width, int height);
    int getImageWidth() const;
    int getImageHeight() const;

    // Renders the figures, keyed by their legend texts (UTF-8), and writes a PNG file to `path`, replacing one that
    // is there. `horizontalHeader` is written under the x axis, `verticalHeader` upright at the left. A key found in
    // `legendLabels` shows that label in the legend instead, for keys that are fixed names rather than texts.
    // Throws std::runtime_error naming the path when the file cannot be written; no partial file stays behind.
    void saveToImage(const std::string& path, std::map<std::string, std::unique_ptr<Figure>>& figures,
                     const std::string& horizontalHeader, const std::string& verticalHeader,
                     const std::map<std::string, std::string>& legendLabels = {});

    // The same picture in memory, of the given size (clamped to [MinSize, MaxSize]).
    FiguresImage renderToPixels(const std::map<std::string, std::unique_ptr<Figure>>& figures,
                                const std::string& horizontalHeader, const std::string& verticalHeader, int width,
                                int height, const std::map<std::string, std::string>& legendLabels = {}) const;

private:
    FiguresDrawManager() = default;

    mutable std::mutex _mutex;
    int _width = DefaultWidth;
    int _height = DefaultHeight;
};

} // namespace Zem
