// zemtree-demo: builds a small test tree, runs it through the test queue and prints what happens.
//
//   zemtree-demo [--stop-after N] [--lang en|ru] [--seed S] [--save FILE] [--report FOLDER]
//
// --save writes the tree after the run as a project file, --report writes its report into a folder.
// Exit code: 0 when no test failed, 1 when some test failed, 2 on a bad command line, 3 when a file could not
// be written.

#include "DemoConsole.h"
#include "DemoGroup.h"
#include "DemoTest.h"
#include "DemoTexts.h"
#include "containers/HierarchicalCollectionContainer.h"
#include "containers/HierarchicalContainer.h"
#include "containers/ProjectFile.h"
#include "containers/TestCollectionContainer.h"
#include "core/tree/ActionUnit.h"
#include "core/tree/LocalString.h"
#include "core/tree/TreeLocalization.h"
#include "evaluation/ITestActionContainer.h"
#include "evaluation/TestQueueEvaluator.h"

#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

using ZemTree::LocalString;
using ZemTreeDemo::DemoConsole;
using ZemTreeDemo::DemoGroup;
using ZemTreeDemo::DemoTest;
namespace DemoTexts = ZemTreeDemo::DemoTexts;

namespace {

struct Options {
    int stopAfter = -1;
    std::uint32_t seed = 3;
    std::string savePath;
    std::string reportFolder;
};

bool parseNumber(const std::string& text, long long minimum, long long& value)
{
    try {
        std::size_t used = 0;
        value = std::stoll(text, &used);
        return used == text.size() && value >= minimum && value <= 1000000000LL;
    }
    catch (const std::exception&) {
        return false;
    }
}

bool parseOptions(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        if (name == "--help" || name == "-h")
            return false;
        if (i + 1 >= argc)
            return false;
        const std::string value = argv[++i];
        long long number = 0;
        if (name == "--stop-after" && parseNumber(value, 0, number))
            options.stopAfter = static_cast<int>(number);
        else if (name == "--seed" && parseNumber(value, 0, number))
            options.seed = static_cast<std::uint32_t>(number);
        else if (name == "--lang" && (value == "en" || value == "ru"))
            lng::language = value == "ru" ? 1 : 0;
        else if (name == "--save" && !value.empty())
            options.savePath = value;
        else if (name == "--report" && !value.empty())
            options.reportFolder = value;
        else
            return false;
    }
    return true;
}

// Relay{Overcurrent{Stage 1, Stage 2}, Earth fault{Pickup, Operate time}}: a hierarchical object holding two
// protections, each holding its tests.
std::unique_ptr<ZemTree::HierarchicalContainer> buildTree(std::uint32_t seed, std::vector<DemoTest*>& tests)
{
    auto root = std::make_unique<ZemTree::HierarchicalContainer>(
        "Relay", LocalString::create("Relay REL-1", "Реле REL-1"), LocalString::Empty());
    root->initContainer();
    auto addGroup = [&root](const std::string& id, const LocalString& description) {
        DemoGroup* group = root->getContainers()->add(std::make_unique<DemoGroup>(id, description));
        group->initContainer();
        return group;
    };
    auto addTest = [&tests](DemoGroup* group, std::unique_ptr<DemoTest> test) {
        DemoTest* added = group->getTests()->add(std::move(test));
        added->initContainer();
        tests.push_back(added);
    };

    DemoGroup* overcurrent = addGroup("Overcurrent", LocalString::create("Overcurrent protection", "МТЗ"));
    DemoGroup* earthFault = addGroup("EarthFault", LocalString::create("Earth fault protection", "Защита от ОЗЗ"));
    addTest(overcurrent, std::make_unique<DemoTest>("Stage1", LocalString::create("Stage 1 pickup", "Ступень 1, пуск"),
                                                    5.0, 3.0, "A", seed));
    addTest(overcurrent, std::make_unique<DemoTest>("Stage2", LocalString::create("Stage 2 pickup", "Ступень 2, пуск"),
                                                    12.0, 3.0, "A", seed + 1));
    addTest(earthFault, std::make_unique<DemoTest>("Pickup", LocalString::create("Earth fault pickup", "Пуск ОЗЗ"), 0.5,
                                                   5.0, "A", seed + 2));
    addTest(earthFault,
            std::make_unique<DemoTest>("OperateTime", LocalString::create("Operate time", "Время срабатывания"), 300.0,
                                       2.0, "ms", seed + 3));
    root->setIsEvaluated(true);
    return root;
}

// The item an action belongs to: the nearest node above it with actions (the action stands in its parameters).
const ZemTree::Node* actionOwner(const ZemTree::Node* action)
{
    for (const ZemTree::Node* node = action->getParent(); node != nullptr; node = node->getParent()) {
        if (dynamic_cast<const ZemTree::ITestActionContainer*>(node) != nullptr)
            return node;
    }
    return action->getParent();
}

// Prints every action unit of the tree when it is evaluated.
void watchActions(ZemTree::Node* node, DemoConsole& console)
{
    if (auto* action = dynamic_cast<ZemTree::ActionUnit*>(node)) {
        action->getSignalEvaluated().connect([&console](ZemTree::ActionUnit* unit, ZemTree::IActionEngineAPI*) {
            console.printLine(std::string(DemoTexts::action.get()) + ": " + unit->getDescription() + " "
                              + DemoTexts::of.get() + " " + actionOwner(unit)->getDescription());
        });
    }
    for (ZemTree::Node* child : *node)
        watchActions(child, console);
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    if (!parseOptions(argc, argv, options)) {
        std::cerr << "usage: zemtree-demo [--stop-after N] [--lang en|ru] [--seed S] [--save FILE] [--report FOLDER]\n";
        return 2;
    }

    std::vector<DemoTest*> tests;
    const std::unique_ptr<ZemTree::HierarchicalContainer> root = buildTree(options.seed, tests);
    DemoConsole console;
    watchActions(root.get(), console);

    // Progress of the run, told by the queue's worker to this thread.
    std::mutex progressMutex;
    std::condition_variable progressCondition;
    int finishedTests = 0;
    bool isRunOver = false;

    ZemTree::TestQueueEvaluator queue;
    queue.getSignalStarted().connect([&] { console.printLine(DemoTexts::runStarted.get()); });
    queue.getSignalStateChanged().connect([&](const std::string& line) {
        // The empty line only clears a display; a console has nothing to clear.
        if (!line.empty())
            console.printLine(line);
    });
    queue.getSignalCurrentTestFinished().connect([&] {
        if (auto* test = dynamic_cast<DemoTest*>(queue.getCurrentTest()))
            console.printLine(std::string(DemoTexts::outcome.get()) + ": " + test->getOutcomeText());
        const std::lock_guard<std::mutex> lock(progressMutex);
        ++finishedTests;
        progressCondition.notify_all();
    });
    queue.getSignalFinished().connect([&] {
        const std::lock_guard<std::mutex> lock(progressMutex);
        isRunOver = true;
        progressCondition.notify_all();
    });

    queue.start(std::vector<ZemTree::ITestContainer*>(tests.begin(), tests.end()));

    {
        std::unique_lock<std::mutex> lock(progressMutex);
        if (options.stopAfter >= 0) {
            progressCondition.wait(lock, [&] { return isRunOver || finishedTests >= options.stopAfter; });
            if (!isRunOver) {
                // Stop from the owner's thread, as a user would: the test under way, if any, is cut short.
                const int finishedSoFar = finishedTests;
                lock.unlock();
                console.printLine(std::string(DemoTexts::stopAsked.get()) + ": " + std::to_string(finishedSoFar));
                queue.stop();
                lock.lock();
            }
        }
        progressCondition.wait(lock, [&] { return isRunOver; });
    }

    int run = 0;
    int passed = 0;
    int failed = 0;
    for (const DemoTest* test : tests) {
        const DemoTest::Outcome outcome = test->getOutcome();
        run += outcome == DemoTest::Outcome::NotRun ? 0 : 1;
        passed += outcome == DemoTest::Outcome::Passed ? 1 : 0;
        failed += outcome == DemoTest::Outcome::Failed ? 1 : 0;
    }
    const int stopped = run - passed - failed;
    std::string summary = std::string(DemoTexts::testsRun.get()) + ": " + std::to_string(run) + ", "
                          + DemoTexts::totalPassed.get() + ": " + std::to_string(passed) + ", "
                          + DemoTexts::totalFailed.get() + ": " + std::to_string(failed);
    if (stopped > 0)
        summary += std::string(", ") + DemoTexts::totalStopped.get() + ": " + std::to_string(stopped);
    console.printLine(summary + "; "
                      + (queue.isStoped() ? DemoTexts::runWasStopped.get() : DemoTexts::runCompleted.get()));

    try {
        ZemTree::ProjectFile file;
        if (!options.savePath.empty()) {
            file.save(*root, options.savePath);
            console.printLine(std::string(DemoTexts::projectSaved.get()) + ": " + options.savePath);
        }
        if (!options.reportFolder.empty())
            console.printLine(std::string(DemoTexts::reportWritten.get()) + ": "
                              + file.writeReport(*root, options.reportFolder));
    }
    catch (const std::runtime_error& error) {
        std::cerr << error.what() << "\n";
        return 3;
    }
    return failed > 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
