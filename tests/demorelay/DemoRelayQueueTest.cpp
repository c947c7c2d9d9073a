#include "TemporaryFolder.h"
#include "containers/ProjectFile.h"
#include "containers/TestContainer.h"
#include "containers/TestableContainer.h"
#include "core/device/IVirtualAnalogOutputGroup.h"
#include "core/tree/Node.h"
#include "core/tree/NodeTreeTraversal.h"
#include "evaluation/TestQueueEvaluator.h"
#include "relay/ContactCheckTest.h"
#include "relay/DemoRelay.h"
#include "relay/DemoRelayCommon.h"
#include "relay/ImpedanceZoneTest.h"
#include "relay/PickupTest.h"
#include "relay/RelayLogic.h"
#include "relay/TripTimeTest.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiStringUnit.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/ResultMultiGraph.h"

#include <chrono>
#include <cmath>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <mutex>
#include <random>
#include <string>
#include <vector>

using namespace ZemDemo;
using ZemTree::ResultState;

namespace {

// Runs tests through the queue and waits for its end; `stopAtTest` asks for a stop once that test (0-based)
// has said something.
class QueueRun {
public:
    explicit QueueRun(const std::vector<ZemTree::ITestContainer*>& tests) : _tests(tests)
    {
        for (std::size_t i = 0; i < tests.size(); ++i)
            _connections.push_back(tests[i]->getSignalStateMessage().connect([this, i](const std::string&) {
                const std::lock_guard<std::mutex> lock(_mutex);
                _lastSpeaker = static_cast<int>(i);
                _condition.notify_all();
            }));
        _queue.getSignalFinished().connect([this] {
            const std::lock_guard<std::mutex> lock(_mutex);
            _isFinished = true;
            _condition.notify_all();
        });
    }
    ~QueueRun()
    {
        for (sigc::connection& connection : _connections)
            connection.disconnect();
    }

    // False when the run did not end within the time-out.
    bool run(int stopAtTest = -1)
    {
        _queue.start(_tests);
        std::unique_lock<std::mutex> lock(_mutex);
        if (stopAtTest >= 0) {
            if (!_condition.wait_for(lock, std::chrono::seconds(20),
                                     [&] { return _isFinished || _lastSpeaker >= stopAtTest; }))
                return false;
            lock.unlock();
            _queue.stop();
            lock.lock();
        }
        return _condition.wait_for(lock, std::chrono::seconds(20), [this] { return _isFinished; });
    }

    bool isStopped() const { return _queue.isStoped(); }

private:
    std::vector<ZemTree::ITestContainer*> _tests;
    ZemTree::TestQueueEvaluator _queue;
    std::vector<sigc::connection> _connections;
    std::mutex _mutex;
    std::condition_variable _condition;
    int _lastSpeaker = -1;
    bool _isFinished = false;
};

// Every verdict of a tree as lines: each result's state, each item's state and value, each test's counters.
std::vector<std::string> verdicts(ZemTree::Node& root)
{
    std::vector<std::string> lines;
    const auto state = [](const ZemTree::ResultBase* result) {
        return result == nullptr ? std::string("none") : std::to_string(static_cast<int>(result->getState()));
    };
    for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(&root)) {
        const std::string path = node->getHierarchicalId();
        if (auto* numeric = dynamic_cast<ZemTree::ResultMultiNumericUnit*>(node)) {
            const auto& result = numeric->getValueOut().value;
            lines.push_back(path + " " + state(result.get()));
            if (result)
                for (const auto& [key, item] : result->_items)
                    lines.push_back(key + " " + std::to_string(static_cast<int>(item.getState())) + " "
                                    + item.getMeasurmentDisplayValue());
        }
        else if (auto* text = dynamic_cast<ZemTree::ResultMultiStringUnit*>(node)) {
            lines.push_back(path + " " + state(text->getValueOut().value.get()));
        }
        else if (auto* graph = dynamic_cast<ZemTree::ResultMultiGraphUnit*>(node)) {
            const auto& result = graph->getValueOut().value;
            lines.push_back(path + " " + state(result.get()));
            if (result)
                for (const auto& [key, curve] : result->_items)
                    for (const auto& record : curve.getDataTables().front()->_records)
                        lines.push_back(key + " " + std::to_string(record->getValue()) + " "
                                        + std::to_string(static_cast<int>(record->getResult().getState())));
        }
        else if (auto* testable = dynamic_cast<ZemTree::TestableContainer*>(node)) {
            const ZemTree::TestCounters counters = testable->getCounters();
            lines.push_back(path + " " + std::to_string(counters.okCount) + "/" + std::to_string(counters.failedCount)
                            + "/" + std::to_string(counters.notTestedCount));
        }
    }
    return lines;
}

template <class T> T* findTest(ZemTree::Node& root)
{
    for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(&root))
        if (auto* test = dynamic_cast<T*>(node))
            return test;
    return nullptr;
}

RelaySettings quietRelay()
{
    RelaySettings settings;
    settings.noise = 0.0;
    return settings;
}

RelaySettings noisyRelay(unsigned seed)
{
    RelaySettings settings;
    settings.noise = 0.05;
    settings.seed = seed;
    settings.curve = "extremely";
    return settings;
}

// Builds the sample project, runs it against a relay with `settings` and returns its verdicts.
std::vector<std::string> runSample(const RelaySettings& settings, std::unique_ptr<ZemTree::Node>* keep = nullptr)
{
    std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    SimulatedRelayUnderTest relay(settings);
    attachRelay(root.get(), relay);
    QueueRun run(collectChosenTests(root.get()));
    EXPECT_TRUE(run.run());
    std::vector<std::string> lines = verdicts(*root);
    if (keep != nullptr)
        *keep = std::move(root);
    return lines;
}

std::string fileText(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

using ZemTreeTest::TemporaryFolder;

const std::filesystem::path committedData = std::filesystem::path(ZTR_DEMO_DATA);

TEST(DemoRelayQueue, PreciseRelayPassesEveryTestWithTheCurveTimes)
{
    std::unique_ptr<ZemTree::Node> root;
    runSample(quietRelay(), &root);
    auto* container = dynamic_cast<ZemTree::TestableContainer*>(root.get());
    ASSERT_NE(container, nullptr);
    const ZemTree::TestCounters counters = container->getCounters();
    EXPECT_EQ(counters.okCount, 4u);
    EXPECT_EQ(counters.failedCount, 0u);
    EXPECT_EQ(counters.notTestedCount, 0u);

    // The pickup ramp stops on the first step at or above the setting.
    auto pickup = findTest<PickupTest>(*root)->getPickupResult()->getValueOut().value;
    ASSERT_NE(pickup, nullptr);
    ASSERT_EQ(pickup->_items.size(), 3u);
    for (const auto& [phase, item] : pickup->_items) {
        SCOPED_TRACE(phase);
        EXPECT_NEAR(item.getMeasurment(), 1.0, 1e-9);
    }

    // Trip times as the IEC standard inverse curve gives them, worked out here on their own.
    auto trip = findTest<TripTimeTest>(*root)->getTripTimeResult()->getValueOut().value;
    ASSERT_NE(trip, nullptr);
    ASSERT_EQ(trip->_items.size(), 1u);
    const std::vector<Zem::Point> points = trip->_items.begin()->second.getPointCollection();
    const std::vector<double> multiples{2.0, 3.0, 5.0, 10.0};
    ASSERT_EQ(points.size(), multiples.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        SCOPED_TRACE(multiples[i]);
        EXPECT_DOUBLE_EQ(points[i].x, multiples[i]);
        EXPECT_NEAR(points[i].y, 0.1 * 0.14 / (std::pow(multiples[i], 0.02) - 1.0), 1e-9);
    }

    auto zone = findTest<ImpedanceZoneTest>(*root)->getReachResult()->getValueOut().value;
    ASSERT_NE(zone, nullptr);
    EXPECT_EQ(zone->getState(), ResultState::Ok);
    const std::vector<Zem::Point> reach = zone->_items.begin()->second.getPointCollection();
    const std::vector<double> angles{0.0, 45.0, 75.0, 105.0, 180.0, 270.0};
    ASSERT_EQ(reach.size(), angles.size());
    const std::vector<Zem::Point> polygon = RelayLogic::zonePolygon(10.0, 10.0, 75.0);
    for (std::size_t i = 0; i < reach.size(); ++i) {
        SCOPED_TRACE(angles[i]);
        // Six halvings of the search between half and one and a half times the reach leave a sixty-fourth.
        const double expected = RelayLogic::rayReach(polygon, angles[i]);
        EXPECT_NEAR(std::hypot(reach[i].x, reach[i].y), expected, expected / 64.0);
        EXPECT_NEAR(std::atan2(reach[i].y, reach[i].x),
                    std::atan2(std::sin(angles[i] * M_PI / 180.0), std::cos(angles[i] * M_PI / 180.0)), 1e-9);
    }
    auto contact = findTest<ContactCheckTest>(*root)->getContactResult()->getValueOut().value;
    ASSERT_NE(contact, nullptr);
    EXPECT_EQ(contact->getState(), ResultState::Ok);
}

TEST(DemoRelayQueue, SameSeedGivesTheSameVerdictsAndNoiseFailsSomePoints)
{
    const std::vector<std::string> first = runSample(noisyRelay(7));
    const std::vector<std::string> second = runSample(noisyRelay(7));
    EXPECT_EQ(first, second);
    // With this much scatter some points leave their tolerance while others stay in it.
    std::unique_ptr<ZemTree::Node> root;
    runSample(noisyRelay(7), &root);
    const ZemTree::TestCounters counters = dynamic_cast<ZemTree::TestableContainer*>(root.get())->getCounters();
    EXPECT_GT(counters.failedCount, 0u);
    EXPECT_GT(counters.okCount, 0u);
    EXPECT_NE(runSample(noisyRelay(8)), first) << "another seed scatters otherwise";
}

TEST(DemoRelayQueue, RunningAgainReplacesTheResultsWithTheSameVerdicts)
{
    std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    SimulatedRelayUnderTest relay(noisyRelay(11));
    attachRelay(root.get(), relay);
    const std::vector<ZemTree::ITestContainer*> tests = collectChosenTests(root.get());
    QueueRun first(tests);
    ASSERT_TRUE(first.run());
    const std::vector<std::string> before = verdicts(*root);
    QueueRun second(tests);
    ASSERT_TRUE(second.run());
    EXPECT_EQ(verdicts(*root), before);
    EXPECT_EQ(findTest<ContactCheckTest>(*root)
                  ->getContactResult()
                  ->getValueOut()
                  .value->_items.at("Close")
                  .getMeasurmentCollection()
                  .size(),
              3u)
        << "a second run starts from empty results";
}

TEST(DemoRelayQueue, StopDuringTheSecondTestKeepsTheFirstAndLeavesTheRest)
{
    std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    RelaySettings settings = quietRelay();
    // Slow enough that the stop surely comes while the trip time test waits.
    settings.timeScale = 1.0;
    SimulatedRelayUnderTest relay(settings);
    attachRelay(root.get(), relay);
    const std::vector<ZemTree::ITestContainer*> tests = collectChosenTests(root.get());
    ASSERT_EQ(tests.size(), 4u);
    QueueRun run(tests);
    ASSERT_TRUE(run.run(1));
    EXPECT_TRUE(run.isStopped());

    EXPECT_NE(findTest<PickupTest>(*root)->getPickupResult()->getValueOut().value, nullptr);
    EXPECT_FALSE(tests[1]->isRunning());
    for (std::size_t i = 2; i < tests.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(tests[i]->getStartTime().time_since_epoch().count(), 0) << "never begun";
    }
    EXPECT_EQ(findTest<ImpedanceZoneTest>(*root)->getReachResult()->getValueOut().value, nullptr);
    EXPECT_EQ(findTest<ContactCheckTest>(*root)->getContactResult()->getValueOut().value, nullptr);
}

TEST(DemoRelayQueue, RelayThatStopsAnsweringKeepsWhatWasMeasuredAndSwitchesTheOutputsOff)
{
    std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    SimulatedRelayUnderTest relay(quietRelay());
    attachRelay(root.get(), relay);
    auto* pickup = findTest<PickupTest>(*root);
    ASSERT_NE(pickup, nullptr);
    std::vector<std::string> lines;
    std::mutex linesMutex;
    // The relay hangs once the first phase is measured: the second phase's first step waits for it in vain.
    sigc::connection hang = pickup->getSignalStateMessage().connect([&](const std::string& line) {
        const std::lock_guard<std::mutex> lock(linesMutex);
        lines.push_back(line);
        if (line.rfind("Phase A: start at", 0) == 0)
            relay.getLogic().setAnswering(false);
    });
    QueueRun run({pickup});
    ASSERT_TRUE(run.run());
    hang.disconnect();

    const auto& result = pickup->getPickupResult()->getValueOut().value;
    ASSERT_NE(result, nullptr);
    ASSERT_EQ(result->_items.size(), 1u);
    EXPECT_EQ(result->_items.begin()->first, "Phase A");
    EXPECT_EQ(result->_items.begin()->second.getState(), ResultState::Ok);
    ASSERT_FALSE(lines.empty());
    EXPECT_NE(lines.back().find("does not answer"), std::string::npos) << lines.back();
    for (const ZemDevice::AnalogPhasor& phasor : findAnalogGroup(relay, RelayLogic::CurrentGroupPath)->getPhasors())
        EXPECT_EQ(phasor.amplitude, 0.0);
}

TEST(DemoRelayQueue, SavedRunLoadsWithTheSameVerdicts)
{
    std::unique_ptr<ZemTree::Node> root;
    const std::vector<std::string> before = runSample(noisyRelay(3), &root);
    TemporaryFolder folder;
    const std::string path = (folder.path() / "run.xml").string();
    ZemTree::ProjectFile files;
    files.save(*root, path);
    const std::unique_ptr<ZemTree::Node> loaded = files.load(path);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(files.getProblems().empty()) << files.getProblems().front();
    EXPECT_EQ(verdicts(*loaded), before);
}

TEST(DemoRelayQueue, CommittedSampleFilesLoadCleanlyAndMatchWhatTheCodeBuilds)
{
    // Each committed file, loaded and written again, gives what writeSampleFiles writes today: the files are
    // in step with the code, whatever the library's way of writing them.
    TemporaryFolder folder;
    const std::filesystem::path fresh = folder.path() / "fresh";
    writeSampleFiles(fresh.string());
    ZemTree::ProjectFile files;
    for (const char* name : {"PickupTest.xml", "TripTimeTest.xml", "ImpedanceZoneTest.xml", "ContactCheckTest.xml"}) {
        SCOPED_TRACE(name);
        const std::unique_ptr<ZemTree::Node> loaded = files.load((committedData / name).string());
        ASSERT_NE(dynamic_cast<ZemTree::ITestContainer*>(loaded.get()), nullptr);
        EXPECT_TRUE(files.getProblems().empty()) << files.getProblems().front();
        files.saveTemplate(*loaded, (folder.path() / name).string());
        EXPECT_EQ(fileText(folder.path() / name), fileText(fresh / name));
    }
    const std::unique_ptr<ZemTree::Node> sample = files.load((committedData / "sample-project.xml").string());
    ASSERT_NE(sample, nullptr);
    EXPECT_TRUE(files.getProblems().empty()) << files.getProblems().front();
    files.save(*sample, (folder.path() / "sample-project.xml").string());
    EXPECT_EQ(fileText(folder.path() / "sample-project.xml"), fileText(fresh / "sample-project.xml"));

    std::vector<std::string> ids;
    for (ZemTree::ITestContainer* test : collectChosenTests(sample.get()))
        ids.push_back(dynamic_cast<ZemTree::Node*>(test)->getId());
    EXPECT_EQ(ids, (std::vector<std::string>{"Pickup", "TripTime", "Zone1", "Follower"}));
}

TEST(DemoRelayQueue, MalformedMultiplesAreReportedAndTheDefaultsStay)
{
    TemporaryFolder folder;
    writeSampleFiles(folder.path().string());
    std::string text = fileText(folder.path() / "sample-project.xml");
    const std::string good = "Multiples=\"2;3;5;10\"";
    const std::size_t at = text.find(good);
    ASSERT_NE(at, std::string::npos);
    text.replace(at, good.size(), "Multiples=\"2;x;0.5\"");
    const std::filesystem::path broken = folder.path() / "broken.xml";
    std::ofstream(broken, std::ios::binary) << text;

    ZemTree::ProjectFile files;
    const std::unique_ptr<ZemTree::Node> loaded = files.load(broken.string());
    ASSERT_NE(loaded, nullptr);
    EXPECT_FALSE(files.getProblems().empty());
    EXPECT_EQ(findTest<TripTimeTest>(*loaded)->getMultiples(), (std::vector<double>{2.0, 3.0, 5.0, 10.0}));
}

TEST(DemoRelayQueue, FiltersChooseTestsByTheirPath)
{
    std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    const std::vector<ZemTree::ITestContainer*> all = collectChosenTests(root.get());
    ASSERT_EQ(all.size(), 4u);
    const std::string distancePath = dynamic_cast<ZemTree::Node*>(all[2])->getHierarchicalId();
    EXPECT_EQ(collectChosenTests(root.get(), {distancePath}), std::vector<ZemTree::ITestContainer*>{all[2]});
    findTest<PickupTest>(*root)->setIsEvaluated(false);
    EXPECT_EQ(collectChosenTests(root.get()).size(), 3u);
}

} // namespace
