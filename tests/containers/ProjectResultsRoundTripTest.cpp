#include "ContainerTestNodes.h"

#include "containers/ProjectFile.h"
#include "core/tree/Measures.h"
#include "core/tree/NodeTreeTraversal.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/Tolerance.h"
#include "core/tree/ToleranceItem.h"
#include "core/tree/ToleranceReduced.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiStringUnit.h"
#include "results/StringSettingAssessment.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/ResultMultiGraph.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

using namespace ZemTree;
using namespace ZemTreeTest;

namespace {

// A test whose results section holds one result unit of each kind.
class MeasuringTest : public TestContainer {
public:
    MeasuringTest() : MeasuringTest("MeasuringTest") {}
    explicit MeasuringTest(const std::string& id) : TestContainer(id) {}

    ResultMultiNumericUnit* pickup = nullptr;
    ResultMultiStringUnit* contact = nullptr;
    ResultMultiGraphUnit* tripTime = nullptr;

    using TestContainer::_finishExecute;

protected:
    void _fillTemplate() override
    {
        TestContainer::_fillTemplate();
        pickup = getResults()->add(std::make_unique<ResultMultiNumericUnit>(
            "Pickup", LocalString("Pickup current"), LocalString::Empty(), nullptr, Measures::Ampere()));
        contact = getResults()->add(std::make_unique<ResultMultiStringUnit>(
            "Contact", LocalString("Trip contact"), LocalString::Empty(), nullptr));
        tripTime = getResults()->add(std::make_unique<ResultMultiGraphUnit>(
            "TripTime", LocalString("Trip time"), LocalString::Empty(), nullptr));
    }
    void startExecute() override {}
};

const char* const standardInverse = "{T}*0.14/(({x}/{I})^0.02-1)";

double standardInverseTime(double multiple, double timeMultiplier)
{
    return timeMultiplier * 0.14 / (std::pow(multiple, 0.02) - 1.0);
}

// Fills the results of a test; `variant` picks which points fail, so the tests of a project differ.
void measure(MeasuringTest& test, int variant)
{
    auto within5 = std::make_shared<ToleranceReduced>(Zem::Nullable<RangeStructure>(RangeStructure::Standart(-5, 5)),
                                                      Zem::Nullable<RangeStructure>());
    const std::string phaseB = variant % 2 == 0 ? "1.02" : "1.2";
    test.pickup->setData(std::make_shared<ResultMultiNumeric>(
        std::map<std::string, std::vector<std::string>>{{"A", {"0.99"}}, {"B", {phaseB}}, {"C", {"1.01", "1.03"}}},
        std::make_shared<NumericSettingAssessment>(1.0, within5)));

    test.contact->setData(std::make_shared<ResultMultiString>(
        std::map<std::string, std::vector<std::string>>{{"Trip", {variant == 2 ? "open" : "closed"}}},
        std::make_shared<StringSettingAssessment>("closed")));

    auto tolerance = std::make_shared<Tolerance>();
    tolerance->add(std::make_unique<ToleranceItem>(RangeStructure::Standart(0, 1e6),
                                                   Zem::Nullable<RangeStructure>(RangeStructure::Standart(-5, 5)),
                                                   Zem::Nullable<RangeStructure>()));
    auto manager = std::make_shared<GraphTimeManager>("Trip time", Measures::Second(), tolerance);
    manager->setFormula(standardInverse);
    manager->setIOperate(1.0);
    manager->setTOperate(0.1);
    std::vector<Zem::Point> points;
    for (double multiple : {2.0, 5.0, 10.0})
        points.push_back({multiple, standardInverseTime(multiple, 0.1) * (multiple == 5.0 && variant == 1 ? 1.2 : 1.01)});
    test.tripTime->setData(std::make_shared<ResultMultiGraph>(
        std::map<std::string, std::vector<Zem::Point>>{{"Phase A", points}}, manager));
}

// Root > two protections > three tests each: all kinds of results, some failing, one test never run and not
// chosen.
std::unique_ptr<SampleRoot> buildMeasuredProject()
{
    registerSampleTypes();
    NodeFactory::registerType<MeasuringTest>();
    auto root = std::make_unique<SampleRoot>();
    root->initContainer();
    for (int p = 0; p < 2; ++p) {
        auto* protection = addFilled<SampleProtection>(root->getContainers(), "Protection" + std::to_string(p));
        for (int t = 0; t < 3; ++t) {
            auto* test = addFilled<MeasuringTest>(protection->getTests(), "Test" + std::to_string(t));
            if (p == 1 && t == 2) {
                test->setIsEvaluated(false);
                continue;
            }
            test->beginExecute();
            measure(*test, t);
            test->_finishExecute();
        }
    }
    return root;
}

// Every result of a tree as text lines: path, kind, state and the items' display values and deviations.
std::vector<std::string> verdicts(Node& root)
{
    std::vector<std::string> lines;
    for (Node* node : NodeTreeTraversal(&root)) {
        const std::string path = node->getHierarchicalId();
        if (auto* unit = dynamic_cast<ResultMultiNumericUnit*>(node)) {
            const auto& result = unit->getValueOut().value;
            lines.push_back(path + " numeric " + (result ? result->getStateDescription() : "null"));
            if (result)
                for (const auto& [key, item] : result->_items)
                    lines.push_back(key + " " + item.getStateDescription() + " " + item.getMeasurmentDisplayValue()
                                    + " " + item.getDeviation().getDisplayValue());
        }
        else if (auto* text = dynamic_cast<ResultMultiStringUnit*>(node)) {
            const auto& result = text->getValueOut().value;
            lines.push_back(path + " string " + (result ? result->getStateDescription() : "null"));
        }
        else if (auto* graph = dynamic_cast<ResultMultiGraphUnit*>(node)) {
            const auto& result = graph->getValueOut().value;
            lines.push_back(path + " graph " + (result ? result->getStateDescription() : "null"));
            if (result)
                for (const auto& [key, curve] : result->_items)
                    for (const auto& table : curve.getDataTables())
                        for (const auto& record : table->_records)
                            lines.push_back(key + " " + std::to_string(record->getValue()) + " "
                                        + record->getResult().getStateDescription() + " "
                                        + record->getResult().getDeviation().getDisplayValue());
        }
        else if (auto* testable = dynamic_cast<TestableContainer*>(node)) {
            const TestCounters counters = testable->getCounters();
            const auto evaluated = testable->getIsEvaluated();
            lines.push_back(path + " counters " + std::to_string(counters.okCount) + "/"
                            + std::to_string(counters.failedCount) + "/" + std::to_string(counters.notTestedCount)
                            + " evaluated " + (evaluated.hasValue() ? (evaluated.getValue() ? "yes" : "no") : "mixed"));
        }
    }
    return lines;
}

std::string fileText(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

} // namespace

TEST(ProjectResultsRoundTrip, ResultsOfEveryKindComeBackWithTheirVerdictsAndReport)
{
    TemporaryFolder folder;
    auto original = buildMeasuredProject();
    const std::vector<std::string> before = verdicts(*original);
    // The project really mixes verdicts: something passed, something failed, something was not tested.
    const TestCounters counters = original->getCounters();
    ASSERT_GT(counters.okCount, 0u);
    ASSERT_GT(counters.failedCount, 0u);
    ASSERT_GT(counters.notTestedCount, 0u);

    ProjectFile files;
    const std::string path = folder.file("project.xml");
    files.save(*original, path);
    std::unique_ptr<Node> loaded = files.load(path);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(files.getProblems().empty()) << files.getProblems().front();

    EXPECT_EQ(verdicts(*loaded), before);
    files.save(*loaded, folder.file("again.xml"));
    EXPECT_EQ(fileText(folder.file("again.xml")), fileText(path));

    const std::string first = files.writeReport(*original, folder.file("report1"));
    const std::string second = files.writeReport(*loaded, folder.file("report2"));
    // Both name their pictures the same way, each in its own folder; times of day may differ by a second.
    const std::regex clock("(StartTime|EndTime|ElapsedTime)=\"[^\"]*\"");
    EXPECT_EQ(std::regex_replace(fileText(second), clock, "$1=\"\""),
              std::regex_replace(fileText(first), clock, "$1=\"\""));

    const auto pictures = [&](const std::string& report) {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path() / report))
            count += entry.path().extension() == ".png";
        return count;
    };
    EXPECT_EQ(pictures("report2"), 5u) << "one picture per graph result that was measured";

    // A report written again over the old one takes the old one's pictures away, and only those.
    const std::filesystem::path stranger = folder.path() / "report2" / "images" / "photo.png";
    std::ofstream(stranger) << "not ours";
    files.writeReport(*loaded, folder.file("report2"));
    EXPECT_EQ(pictures("report2"), 6u);
    EXPECT_TRUE(std::filesystem::exists(stranger));
    std::smatch named;
    const std::string third = fileText(second);
    ASSERT_TRUE(std::regex_search(third, named, std::regex("Graph=\"([^\"]+)\"")));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "report2" / "images" / named[1].str()));
}
