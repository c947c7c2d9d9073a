// The sample's protections hold the relay's settings; the tests' expected values follow them through formulas,
// and the simulated relay is set from them when a run starts.

#include "LanguageGuard.h"
#include "TemporaryFolder.h"
#include "contacts/AnalogOutputRedirectCollection.h"
#include "contacts/AnalogOutputRedirectCollectionUnit.h"
#include "contacts/AnalogOutputTarget.h"
#include "contacts/Contact.h"
#include "contacts/ContactUnit.h"
#include "containers/ParametersContainer.h"
#include "containers/ProjectFile.h"
#include "containers/SettingsContainer.h"
#include "containers/TestableContainer.h"
#include "core/tree/NodeTreeTraversal.h"
#include "core/tree/ValueErrors.h"
#include "evaluation/TestQueueEvaluator.h"
#include "relay/ContactCheckTest.h"
#include "relay/ContactsProtection.h"
#include "relay/CurveUnit.h"
#include "relay/DemoRelay.h"
#include "relay/DistanceProtection.h"
#include "relay/ImpedanceZoneTest.h"
#include "relay/OvercurrentProtection.h"
#include "relay/PickupTest.h"
#include "relay/ProtectionContainer.h"
#include "relay/TripTimeTest.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiStringUnit.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/ResultMultiGraph.h"
#include "values/NumericUnit.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

using namespace ZemDemo;

namespace {

template <class T> T* find(ZemTree::Node& root)
{
    for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(&root))
        if (auto* found = dynamic_cast<T*>(node))
            return found;
    return nullptr;
}

ZemTree::NumericUnit* setting(ZemTree::Node* container, const std::string& id)
{
    auto* universal = dynamic_cast<ZemTree::UniversalGeneralContainer*>(container);
    for (ZemTree::Node* child : *universal->getSettings())
        if (child->getId() == id)
            return dynamic_cast<ZemTree::NumericUnit*>(child);
    return nullptr;
}

ZemTree::ContactUnit* wiring(ZemTree::Node* test, const std::string& id)
{
    auto* universal = dynamic_cast<ZemTree::UniversalGeneralContainer*>(test);
    for (ZemTree::Node* child : *universal->getParameters())
        if (child->getId() == id)
            return dynamic_cast<ZemTree::ContactUnit*>(child);
    return nullptr;
}

// Runs `tests` through the queue against a relay set from the tree with `overrides`, and waits for the end.
void runAgainstTree(ZemTree::Node& root, const std::vector<ZemTree::ITestContainer*>& tests,
                    const std::vector<std::pair<std::string, std::string>>& overrides = {},
                    std::vector<std::string>* lines = nullptr)
{
    RelaySettings settings;
    settings.noise = 0.0;
    settings.timeScale = 0.02;
    readRelaySettings(&root, settings);
    for (const auto& [name, value] : overrides)
        ASSERT_EQ("", overrideRelaySetting(settings, name, value));
    SimulatedRelayUnderTest relay(settings);
    attachRelay(&root, relay);
    std::mutex mutex;
    std::condition_variable condition;
    bool isFinished = false;
    ZemTree::TestQueueEvaluator queue;
    queue.getSignalStateChanged().connect([&](const std::string& line) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (lines != nullptr)
            lines->push_back(line);
    });
    // The queue goes before what its slots use.
    queue.getSignalFinished().connect([&] {
        const std::lock_guard<std::mutex> lock(mutex);
        isFinished = true;
        condition.notify_all();
    });
    queue.start(tests);
    std::unique_lock<std::mutex> lock(mutex);
    ASSERT_TRUE(condition.wait_for(lock, std::chrono::seconds(30), [&] { return isFinished; }));
}

// The operate time of the IEC curves, worked out here on its own.
double iecTime(const std::string& curve, double multiple, double timeMultiplier)
{
    const double k = curve == "standard" ? 0.14 : curve == "very" ? 13.5 : 80.0;
    const double a = curve == "standard" ? 0.02 : curve == "very" ? 1.0 : 2.0;
    return timeMultiplier * k / (std::pow(multiple, a) - 1.0);
}

TEST(RelayTestObject, TripTimeTestJudgesAgainstTheProtectionsCurveAndTimeMultiplier)
{
    struct Row {
        const char* text;
        const char* curve;
        double timeMultiplier;
        // What the simulated relay is set to otherwise than the tree, if anything.
        const char* relayCurve;
        bool passes;
    };
    const std::vector<Row> rows = {{"as delivered", "standard", 0.1, nullptr, true},
                                   {"time multiplier doubled", "standard", 0.2, nullptr, true},
                                   {"very inverse", "very", 0.1, nullptr, true},
                                   {"extremely inverse, slower", "extremely", 0.3, nullptr, true},
                                   {"relay set to very, project standard", "standard", 0.1, "very", false}};
    std::vector<double> deliveredTimes;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        std::unique_ptr<ZemTree::Node> root = buildSampleProject();
        auto* overcurrent = find<OvercurrentProtection>(*root);
        auto* test = find<TripTimeTest>(*root);
        ASSERT_NE(overcurrent, nullptr);
        overcurrent->getCurve()->setData(row.curve);
        overcurrent->getTimeMultiplier()->setData(row.timeMultiplier);
        // The test's own setting follows at once, before any run.
        EXPECT_DOUBLE_EQ(row.timeMultiplier, setting(test, "TimeMultiplier")->getValueOut().value);

        std::vector<std::pair<std::string, std::string>> overrides;
        if (row.relayCurve != nullptr)
            overrides.emplace_back("overcurrent.curve", row.relayCurve);
        runAgainstTree(*root, {test}, overrides);
        const ZemTree::TestCounters counters = test->getCounters();
        EXPECT_EQ(row.passes ? 1u : 0u, counters.okCount);
        EXPECT_EQ(row.passes ? 0u : 1u, counters.failedCount);

        const auto result = test->getTripTimeResult()->getValueOut().value;
        ASSERT_NE(result, nullptr);
        auto* manager = dynamic_cast<ZemTree::GraphTimeManager*>(result->getManager());
        ASSERT_NE(manager, nullptr);
        std::vector<double> expected;
        for (const double multiple : test->getMultiples()) {
            const double time = ZemTree::GraphTimeManager::CalculateTime(manager->getFormula(), manager->getIOperate(),
                                                                         manager->getTOperate(), multiple);
            EXPECT_NEAR(iecTime(row.curve, multiple, row.timeMultiplier), time, 1e-9);
            expected.push_back(time);
        }
        if (row.curve == std::string("standard") && row.timeMultiplier == 0.1 && row.relayCurve == nullptr)
            deliveredTimes = expected;
        if (row.timeMultiplier == 0.2) {
            ASSERT_EQ(deliveredTimes.size(), expected.size());
            for (std::size_t i = 0; i < expected.size(); ++i)
                EXPECT_NEAR(2.0 * deliveredTimes[i], expected[i], 1e-9) << "every expected time doubles";
        }
    }
}

TEST(RelayTestObject, ExpectedValuesFollowEachSettingLiveAndSurviveASave)
{
    ZemTreeTest::TemporaryFolder folder;
    std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    auto* overcurrent = find<OvercurrentProtection>(*root);
    auto* distance = find<DistanceProtection>(*root);
    ZemTree::Node* pickupTest = find<PickupTest>(*root);
    ZemTree::Node* tripTest = find<TripTimeTest>(*root);
    ZemTree::Node* zoneTest = find<ImpedanceZoneTest>(*root);
    struct Row {
        ZemTree::NumericUnit* source;
        double value;
        std::vector<std::pair<ZemTree::Node*, const char*>> followers;
    };
    const std::vector<Row> rows = {{overcurrent->getPickup(), 2.5, {{pickupTest, "Pickup"}, {tripTest, "Pickup"}}},
                                   {overcurrent->getTimeMultiplier(), 0.35, {{tripTest, "TimeMultiplier"}}},
                                   {distance->getReachR(), 7.5, {{zoneTest, "ReachR"}}},
                                   {distance->getReachX(), 12.0, {{zoneTest, "ReachX"}}},
                                   {distance->getLineAngle(), 80.0, {{zoneTest, "LineAngle"}}}};
    for (const Row& row : rows) {
        row.source->setData(row.value);
        for (const auto& [test, id] : row.followers) {
            SCOPED_TRACE(test->getHierarchicalId() + "/" + id);
            EXPECT_DOUBLE_EQ(row.value, setting(test, id)->getValueOut().value);
        }
    }

    ZemTree::ProjectFile files;
    files.save(*root, folder.file("project.xml"));
    const std::unique_ptr<ZemTree::Node> loaded = files.load(folder.file("project.xml"));
    EXPECT_TRUE(files.getProblems().empty());
    for (const Row& row : rows) {
        for (const auto& [test, id] : row.followers) {
            SCOPED_TRACE(test->getHierarchicalId() + "/" + id);
            const ZemTree::NumericUnit* before = setting(test, id);
            ZemTree::Node* again = nullptr;
            for (ZemTree::Node* node : ZemTree::NodeTreeTraversal(loaded.get()))
                if (node->getHierarchicalId() == test->getHierarchicalId())
                    again = node;
            ASSERT_NE(again, nullptr);
            const ZemTree::NumericUnit* after = setting(again, id);
            EXPECT_TRUE(after->getIsFormulaSource());
            EXPECT_EQ(before->getFormula(), after->getFormula());
            EXPECT_DOUBLE_EQ(row.value, after->getValueOut().value);
        }
    }
    RelaySettings relay;
    readRelaySettings(loaded.get(), relay);
    EXPECT_DOUBLE_EQ(2.5, relay.pickup);
    EXPECT_DOUBLE_EQ(0.35, relay.timeMultiplier);
    EXPECT_DOUBLE_EQ(7.5, relay.zoneR);
    EXPECT_DOUBLE_EQ(12.0, relay.zoneX);
    EXPECT_DOUBLE_EQ(80.0, relay.lineAngle);
}

TEST(RelayTestObject, AFormulaThatCannotBeEvaluatedRefusesTheTestWithItsMessage)
{
    struct Row {
        const char* formula;
        const char* message;
    };
    for (const Row& row : {Row{"{../../../../Settings/Pickupp}", "Unresolved reference"},
                           Row{"{../../../../Settings/Pickup}*", "Setting Pickup: "},
                           Row{"{../../../../Settings/Curve}", "Setting Pickup: "}}) {
        SCOPED_TRACE(row.formula);
        std::unique_ptr<ZemTree::Node> root = buildSampleProject();
        ZemTree::Node* test = find<PickupTest>(*root);
        setting(test, "Pickup")->setFormula(row.formula);
        const std::vector<std::string> problems = findSettingProblems(root.get(), RelaySettings{});
        ASSERT_EQ(1u, problems.size());
        EXPECT_EQ(0u, problems.front().find(test->getHierarchicalId() + ": Setting Pickup: "));
        EXPECT_NE(std::string::npos, problems.front().find(row.message));
        const std::vector<std::string> errors = findValueErrors(root.get());
        ASSERT_EQ(1u, errors.size());
        EXPECT_EQ(0u, errors.front().find(test->getHierarchicalId() + "/Settings/Pickup: "));
    }
}

TEST(RelayTestObject, RelaySettingsAreOverriddenByNameAndBadOnesRefused)
{
    struct Row {
        const char* name;
        const char* value;
        bool isTaken;
        double RelaySettings::*field;
        double expected;
    };
    const std::vector<Row> rows = {{"overcurrent.pickup", "1.5", true, &RelaySettings::pickup, 1.5},
                                   {"Overcurrent.TimeMultiplier", "0.3", true, &RelaySettings::timeMultiplier, 0.3},
                                   {"distance.reachR", "4", true, &RelaySettings::zoneR, 4.0},
                                   {"DISTANCE.REACHX", "6", true, &RelaySettings::zoneX, 6.0},
                                   {"distance.lineAngle", "60", true, &RelaySettings::lineAngle, 60.0},
                                   {"contacts.delay", "0.2", true, &RelaySettings::followerDelay, 0.2},
                                   {"overcurrent.pickup", "1,5", false, &RelaySettings::pickup, 1.0},
                                   {"overcurrent.pickup", "inf", false, &RelaySettings::pickup, 1.0},
                                   {"distance.reach", "4", false, &RelaySettings::zoneR, 10.0},
                                   {"pickup", "4", false, &RelaySettings::pickup, 1.0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.name) + "=" + row.value);
        RelaySettings settings;
        const std::string refusal = overrideRelaySetting(settings, row.name, row.value);
        EXPECT_EQ(row.isTaken, refusal.empty()) << refusal;
        EXPECT_DOUBLE_EQ(row.expected, settings.*row.field);
    }
    RelaySettings settings;
    EXPECT_EQ("", overrideRelaySetting(settings, "overcurrent.curve", "very"));
    EXPECT_EQ("very", settings.curve);
    EXPECT_NE("", overrideRelaySetting(settings, "overcurrent.curve", "inverse"));
    EXPECT_EQ("very", settings.curve);
}

TEST(RelayTestObject, ACurveOutsideItsListIsAnErrorAndTheRelayKeepsItsOwn)
{
    std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    auto* overcurrent = find<OvercurrentProtection>(*root);
    for (const char* curve : {"very", "moderately", "", "Very"}) {
        SCOPED_TRACE(curve);
        overcurrent->getCurve()->setData(curve);
        const bool isKnown = curve == std::string("very");
        EXPECT_EQ(!isKnown, overcurrent->getCurve()->getError() != nullptr);
        RelaySettings settings;
        readRelaySettings(root.get(), settings);
        EXPECT_EQ(isKnown ? "very" : "standard", settings.curve);
        // The trip time test cannot know its characteristic and says so.
        EXPECT_EQ(isKnown, findSettingProblems(root.get(), settings).empty());
    }
}

// The tests listen to the inputs and drive the outputs that their contact units name: a trip contact wired to
// an input the relay does not close sees no trip, and a unit bound to a channel the test set lacks refuses the
// test with its error.
TEST(RelayTestObject, TestsListenWhereTheirContactsAreWired)
{
    struct Row {
        const char* text;
        const char* contact;
        const char* path;
        bool passes;
        // Found in a state line of the run.
        const char* line;
    };
    // One project, rewired from row to row.
    const std::vector<Row> rows = {
        {"trip contact as delivered", "TripContact", "BinaryInputs/Group 1/Input 1", true, "Trip after"},
        {"trip contact on an input the relay leaves open", "TripContact", "BinaryInputs/Group 1/Input 5", false,
         "No trip within"},
        {"trip contact rewired back", "TripContact", "BinaryInputs/Group 1/Input 1", true, "Trip after"},
        {"trip contact on a channel the test set lacks", "TripContact", "BinaryInputs/Group 9/Input 1", false,
         "Refused: Wiring TripContact: "},
        {"current outputs elsewhere: the relay sees no current", "AnalogOutputs", "AnalogOutputs/Group 3", false,
         "No trip within"},
    };
    std::unique_ptr<ZemTree::Node> root = buildSampleProject();
    auto* test = find<TripTimeTest>(*root);
    test->setMultiples({5.0});
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        if (ZemTree::ContactUnit* unit = wiring(test, row.contact)) {
            unit->setData(std::make_shared<ZemTree::Contact>(row.path, true));
        }
        else {
            // Only the trip contact is rewired above; the outputs move here, with the trip contact back.
            wiring(test, "TripContact")
                ->setData(std::make_shared<ZemTree::Contact>("BinaryInputs/Group 1/Input 1", true));
            auto* outputs = dynamic_cast<ZemTree::AnalogOutputRedirectCollectionUnit*>(
                *std::find_if(test->getParameters()->begin(), test->getParameters()->end(),
                              [&](ZemTree::Node* node) { return node->getId() == row.contact; }));
            ASSERT_NE(outputs, nullptr);
            auto targets = std::make_shared<ZemTree::AnalogOutputRedirectCollection>();
            targets->add(std::make_unique<ZemTree::AnalogOutputTarget>(std::string(row.path)));
            outputs->setData(targets);
        }
        std::vector<std::string> lines;
        runAgainstTree(*root, {test}, {}, &lines);
        EXPECT_EQ(row.passes ? 1u : 0u, test->getCounters().okCount);
        bool isSeen = false;
        for (const std::string& line : lines)
            isSeen = isSeen || line.find(row.line) != std::string::npos;
        EXPECT_TRUE(isSeen) << (lines.empty() ? std::string("no line") : lines.back());
    }
}

// Result keys, verdict texts and captions are written in the language of the run, and the saved project loads
// and judges the same in the other language.
TEST(RelayTestObject, ARunWritesItsTextsInTheLanguageOfTheRun)
{
    struct Row {
        int language;
        std::vector<std::string> phases;
        std::string curve;
        std::string zone;
        std::string close;
        std::string caption;
    };
    const std::vector<Row> rows = {
        {0, {"Phase A", "Phase B", "Phase C"}, "Phases A, B, C", "Zone 1 reach", "Close", "Current"},
        {1, {"Фаза A", "Фаза B", "Фаза C"}, "Фазы A, B, C", "Граница зоны 1", "Замыкание", "Ток"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.language);
        ZemTreeTest::TemporaryFolder folder;
        std::unique_ptr<ZemTree::Node> root = buildSampleProject();
        {
            const ZemTreeTest::LanguageGuard language(row.language);
            runAgainstTree(*root, collectChosenTests(root.get()));
        }
        ASSERT_EQ(4u, dynamic_cast<ZemTree::TestableContainer&>(*root).getCounters().okCount);
        std::vector<std::string> phases;
        for (const auto& [key, item] : find<PickupTest>(*root)->getPickupResult()->getValueOut().value->_items)
            phases.push_back(key);
        EXPECT_EQ(row.phases, phases);
        const auto trip = find<TripTimeTest>(*root)->getTripTimeResult()->getValueOut().value;
        EXPECT_EQ(1u, trip->_items.count(row.curve));
        EXPECT_EQ(row.caption, dynamic_cast<ZemTree::GraphTimeManager*>(trip->getManager())->getDescription());
        EXPECT_EQ(1u, find<ImpedanceZoneTest>(*root)->getReachResult()->getValueOut().value->_items.count(row.zone));
        EXPECT_EQ(1u, find<ContactCheckTest>(*root)->getContactResult()->getValueOut().value->_items.count(row.close));

        // Saved in one language and read in the other, the verdicts stand.
        ZemTree::ProjectFile files;
        files.save(*root, folder.file("project.xml"));
        const ZemTreeTest::LanguageGuard other(1 - row.language);
        const std::unique_ptr<ZemTree::Node> loaded = files.load(folder.file("project.xml"));
        EXPECT_TRUE(files.getProblems().empty());
        EXPECT_EQ(4u, dynamic_cast<ZemTree::TestableContainer&>(*loaded).getCounters().okCount);
    }
}

} // namespace
