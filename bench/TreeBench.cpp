// A project of 1,000 tests in 20 protections under a two-level hierarchy, each test with a numeric, a string and a
// graph result of 50 points: whole-tree save, load with template rebuild (and the resident memory it takes),
// report, the evaluated cascade from the root, and raw parsing of the same file for comparison.

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
#include "core/tree/NodeFactory.h"
#include "core/tree/NodeTemplateActivatorCollection.h"
#include "core/tree/Measures.h"
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
#include "values/Unit.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <malloc.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int bayCount = 4;
constexpr int protectionsPerBay = 5;
constexpr int testsPerProtection = 50;

class BenchNumberUnit : public ZemTree::Unit<double> {
public:
    BenchNumberUnit() : BenchNumberUnit("Number", 0.0) {}
    BenchNumberUnit(const std::string& id, double value)
        : ZemTree::Unit<double>(id, ZemTree::LocalString(id), ZemTree::LocalString::Empty(), value)
    {
    }

protected:
    double _createDataFromXml(xmlpp::Element* element) const override
    {
        double value = 0.0;
        if (const xmlpp::Attribute* data = element->get_attribute("Data"))
            Zem::fromText(std::string(data->get_value()), value);
        return value;
    }
    void _getDataXml(const double& data, xmlpp::Element* element) const override
    {
        element->set_attribute("Data", Zem::convertToString<double, true>(data, 6));
    }
};

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
        getSettings()->add(std::make_unique<BenchNumberUnit>("Current", 5.0));
        getSettings()->add(std::make_unique<BenchNumberUnit>("Time", 0.3));
        getSettings()->add(std::make_unique<BenchNumberUnit>("Angle", 60.0));
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
    Workspace()
    {
        ZemTree::NodeFactory::registerType<BenchStage>();
        ZemTree::NodeFactory::registerType<BenchProtection>();
        ZemTree::NodeFactory::registerType<BenchStation>();
        _folder = fs::temp_directory_path() / ("zemtree-treebench-" + std::to_string(::getpid()));
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
        for (int b = 0; b < bayCount; ++b) {
            auto* bay = root->getContainers()->add(std::make_unique<ZemTree::HierarchicalContainer>(
                "Bay" + std::to_string(b), ZemTree::LocalString("Bay " + std::to_string(b)), ""));
            bay->initContainer();
            for (int p = 0; p < protectionsPerBay; ++p) {
                auto* protection = bay->getContainers()->add(std::make_unique<BenchProtection>());
                protection->setDescription("Protection " + std::to_string(p));
                protection->initContainer();
                protection->setTemplateActivator(templates.find("BenchProtection"));
                for (int t = 0; t < testsPerProtection; ++t) {
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
    fs::path _folder;
};

Workspace& workspace()
{
    static Workspace instance;
    return instance;
}

void BM_TreeSave(benchmark::State& state)
{
    const std::unique_ptr<BenchStation> root = workspace().build();
    ZemTree::ProjectFile file;
    for (auto _ : state)
        file.save(*root, workspace().path("saved.xml"));
    state.counters["bytes"] = static_cast<double>(fs::file_size(workspace().path("saved.xml")));
}
BENCHMARK(BM_TreeSave)->Unit(benchmark::kMillisecond);

void BM_TreeLoad(benchmark::State& state)
{
    ZemTree::ProjectFile file(workspace().templateFolder());
    for (auto _ : state) {
        std::unique_ptr<ZemTree::Node> root = file.load(workspace().projectPath());
        benchmark::DoNotOptimize(root.get());
        if (!file.getProblems().empty())
            state.SkipWithError(file.getProblems().front().c_str());
    }
    // The memory a loaded project holds, against the size of its file.
    const double before = heapBytesInUse();
    std::unique_ptr<ZemTree::Node> held = file.load(workspace().projectPath());
    const double growth = heapBytesInUse() - before;
    const double fileBytes = static_cast<double>(fs::file_size(workspace().projectPath()));
    state.counters["fileMB"] = fileBytes / 1e6;
    state.counters["heldMB"] = growth / 1e6;
    state.counters["heldPerFileByte"] = growth / fileBytes;
}
BENCHMARK(BM_TreeLoad)->Unit(benchmark::kMillisecond);

// Without pictures: the curves carry no manager here, so the report writes XML only.
void BM_TreeReport(benchmark::State& state)
{
    const std::unique_ptr<BenchStation> root = workspace().build(false);
    ZemTree::ProjectFile file;
    for (auto _ : state)
        file.writeReport(*root, workspace().path("report"));
}
BENCHMARK(BM_TreeReport)->Unit(benchmark::kMillisecond);

void BM_TreeSetIsEvaluatedOnRoot(benchmark::State& state)
{
    const std::unique_ptr<BenchStation> root = workspace().build();
    bool value = true;
    for (auto _ : state) {
        root->setIsEvaluated(value);
        value = !value;
    }
}
BENCHMARK(BM_TreeSetIsEvaluatedOnRoot)->Unit(benchmark::kMillisecond);

void BM_TreeRawParse(benchmark::State& state)
{
    const std::string path = workspace().projectPath();
    for (auto _ : state) {
        xmlpp::DomParser parser;
        parser.parse_file(path);
        benchmark::DoNotOptimize(parser.get_document());
    }
}
BENCHMARK(BM_TreeRawParse)->Unit(benchmark::kMillisecond);

} // namespace
