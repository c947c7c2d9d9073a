// Projects of 100, 1,000 and 5,000 tests in protections of 50 tests under a two-level hierarchy, each test with a
// numeric, a string and a graph result of 50 points: whole-tree save, load with template rebuild (and the memory
// it holds), report with and without pictures, the evaluated cascade from the root, and raw libxml++ parsing and
// writing of the same file for comparison. The argument of each benchmark is the number of tests.

#include "containers/DefendContainer.h"
#include "containers/HierarchicalCollectionContainer.h"
#include "containers/HierarchicalContainer.h"
#include "containers/ProjectFile.h"
#include "containers/ResultCollectionContainer.h"
#include "containers/SettingsContainer.h"
#include "containers/TestCollectionContainer.h"
#include "containers/TestContainer.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/IRootContainer.h"
#include "core/tree/Measures.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/NodeTemplateActivatorCollection.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/Tolerance.h"
#include "core/tree/ToleranceItem.h"
#include "core/tree/ToleranceReduced.h"
#include "evaluation/IHierarchicalContainer.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiStringUnit.h"
#include "results/StringSettingAssessment.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/ResultMultiGraph.h"
#include "values/NumericUnit.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <filesystem>
#include <malloc.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int bayCount = 4;
constexpr int testsPerProtection = 50;

class BenchStage : public ZemTree::TestContainer {
public:
    BenchStage() : ZemTree::TestContainer("Stage") {}

    ZemTree::ResultMultiNumericUnit* pickup = nullptr;
    ZemTree::ResultMultiStringUnit* contact = nullptr;
    ZemTree::ResultMultiGraphUnit* tripTime = nullptr;

    // Measured results of every kind; `withManager` false leaves the curve without a manager, so the report
    // draws no picture.
    void measure(int index, bool withManager)
    {
        auto within5 = std::make_shared<ZemTree::ToleranceReduced>(
            Zem::Nullable<ZemTree::RangeStructure>(ZemTree::RangeStructure::Standart(-5, 5)),
            Zem::Nullable<ZemTree::RangeStructure>());
        pickup->setData(std::make_shared<ZemTree::ResultMultiNumeric>(
            std::map<std::string, std::vector<std::string>>{
                {"A", {"0.99"}}, {"B", {index % 7 == 0 ? "1.2" : "1.01"}}, {"C", {"1.02"}}},
            std::make_shared<ZemTree::NumericSettingAssessment>(1.0, within5)));
        contact->setData(std::make_shared<ZemTree::ResultMultiString>(
            std::map<std::string, std::vector<std::string>>{{"Trip", {"closed"}}},
            std::make_shared<ZemTree::StringSettingAssessment>("closed")));
        std::shared_ptr<ZemTree::GraphTimeManager> manager;
        if (withManager) {
            auto tolerance = std::make_shared<ZemTree::Tolerance>();
            tolerance->add(std::make_unique<ZemTree::ToleranceItem>(
                ZemTree::RangeStructure::Standart(0, 1e6),
                Zem::Nullable<ZemTree::RangeStructure>(ZemTree::RangeStructure::Standart(-5, 5)),
                Zem::Nullable<ZemTree::RangeStructure>()));
            manager = std::make_shared<ZemTree::GraphTimeManager>("Trip time", ZemTree::Measures::Second(), tolerance);
            manager->setFormula("{T}*0.14/(({x}/{I})^0.02-1)");
            manager->setIOperate(1.0);
            manager->setTOperate(0.1);
        }
        std::vector<Zem::Point> points;
        for (int i = 0; i < 50; ++i) {
            const double multiple = 1.5 + 0.5 * i;
            points.push_back({multiple, 0.014 / (std::pow(multiple, 0.02) - 1.0) * (1.0 + 0.001 * (i % 9))});
        }
        tripTime->setData(std::make_shared<ZemTree::ResultMultiGraph>(
            std::map<std::string, std::vector<Zem::Point>>{{"Phase A", points}}, manager));
    }

protected:
    void _fillTemplate() override
    {
        ZemTree::TestContainer::_fillTemplate();
        getSettings()->add(std::make_unique<ZemTree::NumericUnit>("Current", ZemTree::LocalString("Current"),
                                                                  ZemTree::LocalString::Empty(), 5.0));
        getSettings()->add(std::make_unique<ZemTree::NumericUnit>("Time", ZemTree::LocalString("Time"),
                                                                  ZemTree::LocalString::Empty(), 0.3));
        getSettings()->add(std::make_unique<ZemTree::NumericUnit>("Angle", ZemTree::LocalString("Angle"),
                                                                  ZemTree::LocalString::Empty(), 60.0));
        pickup = getResults()->add(std::make_unique<ZemTree::ResultMultiNumericUnit>(
            "Pickup", ZemTree::LocalString("Pickup"), ZemTree::LocalString::Empty(), nullptr,
            ZemTree::Measures::Ampere()));
        contact = getResults()->add(std::make_unique<ZemTree::ResultMultiStringUnit>(
            "Contact", ZemTree::LocalString("Contact"), ZemTree::LocalString::Empty(), nullptr));
        tripTime = getResults()->add(std::make_unique<ZemTree::ResultMultiGraphUnit>(
            "TripTime", ZemTree::LocalString("Trip time"), ZemTree::LocalString::Empty(), nullptr));
    }
};

// Heap memory in use by this process, in bytes: unlike the resident size it is not hidden by pages that the
// allocator keeps from earlier loads.
double heapBytesInUse()
{
    const struct mallinfo2 info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

class BenchProtection : public ZemTree::DefendContainer, public virtual ZemTree::IHierarchicalContainer {
public:
    BenchProtection() : ZemTree::DefendContainer("Protection") {}
};

class BenchStation : public ZemTree::HierarchicalContainer, public virtual ZemTree::IRootContainer {
public:
    BenchStation() : ZemTree::HierarchicalContainer("Station", ZemTree::LocalString("Station"), "") {}
};

// The scratch folder with the templates, the project and the report; removed at exit.
class Workspace {
public:
    explicit Workspace(int testCount) : _testCount(testCount)
    {
        ZemTree::NodeFactory::registerType<BenchStage>();
        ZemTree::NodeFactory::registerType<BenchProtection>();
        ZemTree::NodeFactory::registerType<BenchStation>();
        _folder = fs::temp_directory_path()
                  / ("zemtree-treebench-" + std::to_string(::getpid()) + "-" + std::to_string(testCount));
        fs::create_directories(_folder / "templates");

        ZemTree::ProjectFile file;
        BenchStage stage;
        stage.initContainer();
        file.saveTemplate(stage, templatePath("BenchStage"));
        BenchProtection protection;
        protection.initContainer();
        file.saveTemplate(protection, templatePath("BenchProtection"));
        ZemTree::NodeTemplateActivatorCollection::instance().loadFolder((_folder / "templates").string());

        const std::unique_ptr<BenchStation> root = build();
        file.save(*root, projectPath());
    }
    ~Workspace()
    {
        std::error_code error;
        fs::remove_all(_folder, error);
    }
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    std::string templatePath(const std::string& name) const
    {
        return (_folder / "templates" / (name + ".xml")).string();
    }
    std::string templateFolder() const { return (_folder / "templates").string(); }
    std::string projectPath() const { return (_folder / "project.xml").string(); }
    std::string path(const std::string& name) const { return (_folder / name).string(); }

    std::unique_ptr<BenchStation> build(bool withManagers = true) const
    {
        ZemTree::NodeTemplateActivatorCollection& templates = ZemTree::NodeTemplateActivatorCollection::instance();
        auto root = std::make_unique<BenchStation>();
        root->initContainer();
        // Built as a reading would: the states are published once at the end.
        const ZemTree::TestableContainer::StateUpdateBatch batch(root.get());
        const int protectionsPerBay = std::max(1, _testCount / testsPerProtection / bayCount);
        const int perProtection = std::min(testsPerProtection, _testCount);
        for (int b = 0; b < bayCount && b * protectionsPerBay * perProtection < _testCount; ++b) {
            auto* bay = root->getContainers()->add(std::make_unique<ZemTree::HierarchicalContainer>(
                "Bay" + std::to_string(b), ZemTree::LocalString("Bay " + std::to_string(b)), ""));
            bay->initContainer();
            for (int p = 0; p < protectionsPerBay; ++p) {
                auto* protection = bay->getContainers()->add(std::make_unique<BenchProtection>());
                protection->setDescription("Protection " + std::to_string(p));
                protection->initContainer();
                protection->setTemplateActivator(templates.find("BenchProtection"));
                for (int t = 0; t < perProtection; ++t) {
                    auto stage = std::make_unique<BenchStage>();
                    stage->setDescription("Stage " + std::to_string(t));
                    auto* added = protection->getTests()->add(std::move(stage));
                    added->initContainer();
                    added->setTemplateActivator(templates.find("BenchStage"));
                    added->setIsEvaluated(t % 3 != 0);
                    added->measure(t, withManagers);
                }
            }
        }
        return root;
    }

private:
    int _testCount;
    fs::path _folder;
};

Workspace& workspace(benchmark::State& state)
{
    static std::map<int, std::unique_ptr<Workspace>> instances;
    const int testCount = static_cast<int>(state.range(0));
    std::unique_ptr<Workspace>& instance = instances[testCount];
    if (!instance)
        instance = std::make_unique<Workspace>(testCount);
    return *instance;
}

#define TREE_SIZES ->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond)

void BM_TreeSave(benchmark::State& state)
{
    Workspace& space = workspace(state);
    const std::unique_ptr<BenchStation> root = space.build();
    ZemTree::ProjectFile file;
    for (auto _ : state)
        file.save(*root, space.path("saved.xml"));
    state.counters["bytes"] = static_cast<double>(fs::file_size(space.path("saved.xml")));
}
BENCHMARK(BM_TreeSave) TREE_SIZES;

void BM_TreeLoad(benchmark::State& state)
{
    Workspace& space = workspace(state);
    ZemTree::ProjectFile file(space.templateFolder());
    for (auto _ : state) {
        std::unique_ptr<ZemTree::Node> root = file.load(space.projectPath());
        benchmark::DoNotOptimize(root.get());
        if (!file.getProblems().empty())
            state.SkipWithError(file.getProblems().front().c_str());
        // Tearing the tree down is not part of loading it.
        state.PauseTiming();
        root.reset();
        state.ResumeTiming();
    }
    // The memory a loaded project holds, against the size of its file.
    const double before = heapBytesInUse();
    std::unique_ptr<ZemTree::Node> held = file.load(space.projectPath());
    const double growth = heapBytesInUse() - before;
    const double fileBytes = static_cast<double>(fs::file_size(space.projectPath()));
    state.counters["fileMB"] = fileBytes / 1e6;
    state.counters["heldMB"] = growth / 1e6;
    state.counters["heldPerFileByte"] = growth / fileBytes;
}
BENCHMARK(BM_TreeLoad) TREE_SIZES;

// Without pictures: the curves carry no manager, so the report writes XML only.
void BM_TreeReportWithoutImages(benchmark::State& state)
{
    Workspace& space = workspace(state);
    const std::unique_ptr<BenchStation> root = space.build(false);
    ZemTree::ProjectFile file;
    for (auto _ : state)
        file.writeReport(*root, space.path("report"));
}
BENCHMARK(BM_TreeReportWithoutImages) TREE_SIZES;

// With pictures: every trip-time curve is drawn into a PNG of its own.
void BM_TreeReportWithImages(benchmark::State& state)
{
    Workspace& space = workspace(state);
    const std::unique_ptr<BenchStation> root = space.build(true);
    ZemTree::ProjectFile file;
    for (auto _ : state) {
        file.writeReport(*root, space.path("report-images"));
        state.PauseTiming();
        fs::remove_all(space.path("report-images"));
        state.ResumeTiming();
    }
}
BENCHMARK(BM_TreeReportWithImages)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void BM_TreeSetIsEvaluatedOnRoot(benchmark::State& state)
{
    const std::unique_ptr<BenchStation> root = workspace(state).build();
    bool value = true;
    for (auto _ : state) {
        root->setIsEvaluated(value);
        value = !value;
    }
}
BENCHMARK(BM_TreeSetIsEvaluatedOnRoot) TREE_SIZES;

void BM_TreeRawParse(benchmark::State& state)
{
    const std::string path = workspace(state).projectPath();
    for (auto _ : state) {
        xmlpp::DomParser parser;
        parser.parse_file(path);
        benchmark::DoNotOptimize(parser.get_document());
    }
}
BENCHMARK(BM_TreeRawParse) TREE_SIZES;

// The same document written back by libxml++ alone: the floor of what a save can cost.
void BM_TreeRawWrite(benchmark::State& state)
{
    Workspace& space = workspace(state);
    xmlpp::DomParser parser;
    parser.parse_file(space.projectPath());
    const std::string path = space.path("raw.xml");
    for (auto _ : state)
        parser.get_document()->write_to_file(path, "UTF-8");
}
BENCHMARK(BM_TreeRawWrite) TREE_SIZES;

} // namespace
