#include "core/common/FiguresDrawManager.h"
#include "core/common/PointsSequence.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

// Ten measured curves of two hundred points each: a busy report picture.
std::map<std::string, std::unique_ptr<Zem::Figure>> makeFigures()
{
    std::map<std::string, std::unique_ptr<Zem::Figure>> figures;
    for (int curve = 0; curve < 10; ++curve) {
        std::vector<Zem::PointF> points;
        for (int i = 0; i < 200; ++i) {
            const float x = 1.1f + i * 0.05f;
            points.emplace_back(x, (curve + 1) * 0.14f / (std::pow(x, 0.02f) - 1.0f));
        }
        figures["Кривая " + std::to_string(curve)] = std::make_unique<Zem::PointsSequence>(
            std::move(points), Zem::Color(static_cast<std::uint8_t>(curve * 25), 0, 200), "", curve % 2 == 0, true);
    }
    return figures;
}

// One report picture: rendering and PNG encoding to a file.
void BM_SaveToImage(benchmark::State& state)
{
    auto figures = makeFigures();
    const std::string path = (std::filesystem::temp_directory_path() / "ztr_draw_bench.png").string();
    for (auto _ : state)
        Zem::FiguresDrawManager::getInstance()->saveToImage(path, figures, "I, A", "T, s");
    std::remove(path.c_str());
}
BENCHMARK(BM_SaveToImage)->Unit(benchmark::kMillisecond);

// Rendering alone, without the encoder and the disk.
void BM_RenderToPixels(benchmark::State& state)
{
    const auto figures = makeFigures();
    for (auto _ : state) {
        const Zem::FiguresImage image =
            Zem::FiguresDrawManager::getInstance()->renderToPixels(figures, "I, A", "T, s", 800, 600);
        benchmark::DoNotOptimize(image.pixels.data());
    }
}
BENCHMARK(BM_RenderToPixels)->Unit(benchmark::kMillisecond);

} // namespace
