#include "core/common/ConvertionHelper.h"
#include "core/common/FiguresDrawManager.h"
#include "core/common/Point.h"
#include "core/tree/Measure.h"
#include "core/tree/Measures.h"
#include "core/tree/Tolerance.h"
#include "results/graph/GraphDataHeader.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/ResultMultiGraph.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

// A time manager of the standard inverse characteristic with a tolerance of ±5 % and its band as setting lines.
std::shared_ptr<ZemTree::GraphTimeManager> makeManager()
{
    std::shared_ptr<ZemTree::Tolerance> tolerance;
    Zem::tryConvert<std::shared_ptr<ZemTree::Tolerance>, true, true>("[0;inf]:[-5;5]|", tolerance);
    auto manager = std::make_shared<ZemTree::GraphTimeManager>("I", ZemTree::Measures::Ampere(), tolerance);
    manager->setFormula("{T}*0.14/(({x}/{I})^0.02-1)");
    manager->setTOperate(0.1);
    std::vector<Zem::PointF> up;
    std::vector<Zem::PointF> down;
    for (int i = 0; i < 200; ++i) {
        const double x = 1.1 + i * 0.1;
        const double t = 0.1 * 0.14 / (std::pow(x, 0.02) - 1.0);
        up.emplace_back(static_cast<float>(x), static_cast<float>(t * 1.05));
        down.emplace_back(static_cast<float>(x), static_cast<float>(t * 0.95));
    }
    manager->setSettingsFigures(up, Zem::Color::Red(), down, Zem::Color::Orange());
    return manager;
}

// Ten measured curves of two hundred points each, scattered around the characteristic.
std::map<std::string, std::vector<Zem::Point>> makePoints()
{
    std::map<std::string, std::vector<Zem::Point>> points;
    for (int curve = 0; curve < 10; ++curve) {
        std::vector<Zem::Point>& line = points["Curve " + std::to_string(curve)];
        for (int i = 0; i < 200; ++i) {
            const double x = 1.1 + i * 0.1;
            const double t = 0.1 * 0.14 / (std::pow(x, 0.02) - 1.0);
            line.emplace_back(x, t * (0.94 + 0.012 * curve));
        }
    }
    return points;
}

// Making the result: per point the formula is made concrete, parsed, evaluated and the point judged.
void BM_ResultMultiGraphWithTimeManager(benchmark::State& state)
{
    const auto manager = makeManager();
    const auto points = makePoints();
    for (auto _ : state) {
        const ZemTree::ResultMultiGraph result(points, manager);
        benchmark::DoNotOptimize(result.getState());
    }
    state.SetItemsProcessed(state.iterations() * 10 * 200);
}
BENCHMARK(BM_ResultMultiGraphWithTimeManager)->Unit(benchmark::kMillisecond);

// The report picture of that result: its figures rendered and written as PNG.
void BM_ResultMultiGraphPicture(benchmark::State& state)
{
    const auto manager = makeManager();
    const ZemTree::ResultMultiGraph result(makePoints(), manager);
    std::map<std::string, std::vector<Zem::Point>> points;
    for (const auto& item : result._items)
        points[item.first] = item.second.getPointCollection();
    const std::string path = (std::filesystem::temp_directory_path() / "ztr_graph_bench.png").string();
    for (auto _ : state) {
        std::map<std::string, std::unique_ptr<Zem::Figure>> figures;
        std::shared_ptr<ZemTree::GraphDataHeader> header;
        result.getManager()->getFigures(points, figures, header);
        Zem::FiguresDrawManager::getInstance()->saveToImage(
            path, figures, header->getDescriptionX() + ", " + header->getMeasureX()->getDescription(),
            header->getDescriptionY() + ", " + header->getMeasureY()->getDescription());
    }
    std::remove(path.c_str());
}
BENCHMARK(BM_ResultMultiGraphPicture)->Unit(benchmark::kMillisecond);

} // namespace
