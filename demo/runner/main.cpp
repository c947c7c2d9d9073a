// zemtree-run: loads a test project (or builds the sample one), runs its chosen tests against the simulated relay
// through the test queue with a live progress display, saves the project and writes its report as XML, pictures
// and HTML. `zemtree-run --help` tells the options and the exit codes.

#include "containers/ProjectFile.h"
#include "containers/TestableContainer.h"
#include "containers/UnitableStructureContainer.h"
#include "core/tree/Node.h"
#include "core/tree/TreeLocalization.h"
#include "evaluation/ITestContainer.h"
#include "evaluation/TestQueueEvaluator.h"
#include "relay/DemoRelay.h"
#include "relay/RelayTestBase.h"
#include "runner/DeferredSignals.h"
#include "runner/HtmlReport.h"
#include "runner/InterruptFlag.h"
#include "runner/ProjectCheck.h"
#include "runner/RunProgress.h"
#include "runner/RunnerOptions.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int exitPassed = 0;
constexpr int exitFailed = 1;
constexpr int exitError = 2;

void printError(const std::string& message)
{
    std::cerr << "zemtree-run: " << message << std::endl;
}

// The folder a project's templates are looked for in when none is given: the project's own.
std::string templateFolderOf(const ZemDemo::RunnerOptions& options, const std::string& projectPath)
{
    if (!options.templateFolder.empty())
        return options.templateFolder;
    const fs::path folder = fs::path(projectPath).parent_path();
    return folder.empty() ? std::string(".") : folder.string();
}

// A folder that is not there is a mistake of the command line, not a problem of the project.
bool checkTemplateFolder(const ZemDemo::RunnerOptions& options)
{
    std::error_code error;
    if (options.templateFolder.empty() || fs::is_directory(options.templateFolder, error))
        return true;
    printError("the template folder '" + options.templateFolder + "' does not exist");
    return false;
}

// The relay as the project's test object sets it, with what the command line sets otherwise.
ZemDemo::RelaySettings relaySettingsOf(const ZemDemo::RunnerOptions& options, ZemTree::Node* root)
{
    ZemDemo::RelaySettings settings;
    settings.seed = options.seed;
    settings.timeScale = options.timeScale;
    ZemDemo::readRelaySettings(root, settings);
    // Checked when the options were read.
    for (const auto& [name, value] : options.relayOverrides)
        ZemDemo::overrideRelaySetting(settings, name, value);
    return settings;
}

// What a run of the tree would meet beyond its reading: units whose value out is in error, and settings that
// keep a test from running (the same checks the tests make before they drive the hardware).
void appendRunProblems(ZemTree::Node* root, const ZemDemo::RunnerOptions& options, std::vector<std::string>& problems)
{
    // The wiring is judged against the test set a run would have: a unit bound to a channel it lacks is in error.
    ZemDevice::HardwareManager hardware;
    auto* container = dynamic_cast<ZemTree::UnitableStructureContainer*>(root);
    if (container != nullptr)
        container->setHardware(&hardware);
    for (const std::string& line : ZemDemo::findValueErrors(root))
        problems.push_back(line);
    for (const std::string& line : ZemDemo::findSettingProblems(root, relaySettingsOf(options, root), false))
        problems.push_back(line);
    if (container != nullptr)
        container->setHardware(nullptr);
}

int checkOnly(const ZemDemo::RunnerOptions& options)
{
    if (!checkTemplateFolder(options))
        return exitError;
    const ZemDemo::ProjectCheck check =
        ZemDemo::checkProjectFile(options.checkPath, templateFolderOf(options, options.checkPath));
    if (!check.isLoaded) {
        printError(check.error);
        return exitError;
    }
    std::vector<std::string> problems = check.problems;
    appendRunProblems(check.root.get(), options, problems);
    for (const std::string& problem : problems)
        std::cerr << problem << "\n";
    std::cerr.flush();
    if (problems.empty()) {
        std::cout << options.checkPath << ": loads without problems" << std::endl;
        return exitPassed;
    }
    std::cout << options.checkPath << ": loads with " << problems.size() << " problem(s)" << std::endl;
    return exitFailed;
}

ZemTree::TestCounters countersOf(ZemTree::Node* node)
{
    if (auto* testable = dynamic_cast<ZemTree::TestableContainer*>(node))
        return testable->getCounters();
    return {};
}

// Runs `tests` through the queue, shows the progress and stops the queue on Ctrl-C. Returns when the queue has
// ended and its threads are joined.
void runTests(const std::vector<ZemTree::ITestContainer*>& tests, ZemDemo::RunProgress& progress,
              const ZemDemo::InterruptFlag& interrupt, bool& wasStopped, ZemTree::ITestContainer*& stoppedTest)
{
    ZemTree::TestQueueEvaluator queue;
    // The queue's signals fire on its worker: the slots only hand their news to the main thread.
    queue.getSignalStateChanged().connect([&progress](const std::string& line) { progress.postStateLine(line); });
    queue.getSignalCurrentTestFinished().connect([&progress, &queue] {
        ZemTree::ITestContainer* const test = queue.getCurrentTest();
        if (test == nullptr)
            return;
        progress.postTestFinished(test->getDescription(), countersOf(dynamic_cast<ZemTree::Node*>(test)));
    });
    queue.getSignalFinished().connect([&progress] { progress.postRunFinished(); });

    queue.start(tests);
    bool isStopAsked = false;
    // The short wait lets the main thread notice Ctrl-C soon even while no test reports anything.
    while (!progress.waitAndPrint(std::chrono::milliseconds(100))) {
        if (!isStopAsked && interrupt.getCount() > 0) {
            isStopAsked = true;
            stoppedTest = queue.getCurrentTest();
            progress.printNote("zemtree-run: stopping: the test under way is cut short (Ctrl-C again to quit "
                               "without saving)");
            queue.stop();
        }
    }
    progress.close();
    wasStopped = queue.isStoped();
}

// The --set values, before the settings are checked; a name that no chosen test has is an error of the command
// line.
bool applyOverrides(const std::vector<ZemTree::ITestContainer*>& tests, const ZemDemo::RunnerOptions& options)
{
    bool isApplied = true;
    for (const auto& setting : options.settingOverrides) {
        if (ZemDemo::overrideSetting(tests, setting.first, setting.second) == 0) {
            printError("--set " + setting.first + ": no chosen test has such a setting");
            isApplied = false;
        }
    }
    return isApplied;
}

// "the run was stopped during <path>", or after it when the stop came between two tests.
std::string stopText(ZemTree::ITestContainer* stoppedTest)
{
    const auto* node = dynamic_cast<const ZemTree::Node*>(stoppedTest);
    if (node == nullptr)
        return "the run was stopped before its first test";
    const auto* example = dynamic_cast<const ZemDemo::RelayTestBase*>(stoppedTest);
    const bool isCut = example == nullptr || !example->wasStoppedAfterRun();
    return std::string("the run was stopped ") + (isCut ? "during " : "after ") + node->getHierarchicalId();
}

// Saves the project; a signal meanwhile waits until the file is in place. False when the save was refused.
bool saveProject(const ZemTree::ProjectFile& file, const ZemTree::Node& root, const std::string& outputPath)
{
    const ZemDemo::DeferredSignals deferred("the project");
    ZemDemo::DeferredSignals::pauseForTest("the project");
    try {
        // Like the report's folder, the project's folder is made when it is missing.
        const fs::path outputFolder = fs::path(outputPath).parent_path();
        std::error_code folderError;
        if (!outputFolder.empty())
            fs::create_directories(outputFolder, folderError);
        file.save(root, outputPath);
        std::cout << "project: " << outputPath << std::endl;
        return true;
    }
    catch (const std::exception& error) {
        printError(error.what());
        return false;
    }
}

// Writes the report XML and its pictures; a signal meanwhile waits until the report is whole. Returns the
// report's path, empty when it was refused.
std::string writeReportXml(const ZemTree::ProjectFile& file, const ZemTree::Node& root, const std::string& folder)
{
    const ZemDemo::DeferredSignals deferred("the report");
    ZemDemo::DeferredSignals::pauseForTest("the report");
    try {
        const std::string reportPath = file.writeReport(root, folder);
        std::cout << "report XML: " << reportPath << std::endl;
        return reportPath;
    }
    catch (const std::exception& error) {
        printError(error.what());
        return std::string();
    }
}

int run(const ZemDemo::RunnerOptions& options)
{
    if (!checkTemplateFolder(options))
        return exitError;
    std::string stylesheet;
    if (!options.reportFolder.empty()) {
        stylesheet = ZemDemo::HtmlReport::findStylesheet(options.xslPath);
        if (stylesheet.empty() && !options.xslPath.empty()) {
            printError("the stylesheet '" + options.xslPath + "' does not exist");
            return exitError;
        }
    }

    // The relay outlives the tree, whose tests hold its hardware; it is set from the tree once that is loaded.
    std::unique_ptr<ZemDemo::SimulatedRelayUnderTest> relay;
    std::unique_ptr<ZemTree::Node> root;
    std::string outputPath = options.outputPath;
    const std::string templateFolder =
        options.isNew ? options.templateFolder : templateFolderOf(options, options.projectPath);
    ZemTree::ProjectFile file(templateFolder);
    if (options.isNew) {
        root = ZemDemo::buildSampleProject();
        if (outputPath.empty())
            outputPath = "project.xml";
    }
    else {
        try {
            root = file.load(options.projectPath);
        }
        catch (const std::exception& error) {
            printError(error.what());
            return exitError;
        }
        for (const std::string& problem : file.getProblems())
            printError("warning: " + problem);
        if (outputPath.empty())
            outputPath = options.projectPath;
    }
    if (!root) {
        printError("no project to run");
        return exitError;
    }

    std::vector<std::string> unmatched;
    const std::vector<ZemTree::ITestContainer*> tests =
        ZemDemo::collectChosenTests(root.get(), options.testFilters, &unmatched);
    for (const std::string& filter : unmatched)
        printError("--test '" + filter + "' selects no chosen test");
    if (!unmatched.empty())
        return exitError;
    if (!applyOverrides(tests, options))
        return exitError;
    try {
        relay = std::make_unique<ZemDemo::SimulatedRelayUnderTest>(relaySettingsOf(options, root.get()));
    }
    catch (const std::logic_error& error) {
        printError(std::string("the relay cannot be set so: ") + error.what());
        return exitError;
    }
    ZemDemo::attachRelay(root.get(), *relay);
    // Each such test refuses to run; the user hears why before the run starts.
    for (const std::string& problem : ZemDemo::findSettingProblems(tests, relay->getSettings()))
        printError("refused: " + problem);

    std::cout << "running " << tests.size() << " test(s)" << std::endl;
    ZemDemo::RunProgress progress(std::cout, tests.size(), isatty(STDOUT_FILENO) == 1);
    bool wasStopped = false;
    ZemTree::ITestContainer* stoppedTest = nullptr;
    {
        const ZemDemo::InterruptFlag interrupt;
        runTests(tests, progress, interrupt, wasStopped, stoppedTest);
    }

    const int total = static_cast<int>(tests.size());
    const int notRun = total - progress.getFinishedCount();
    std::cout << "result: passed " << progress.getPassedCount() << ", failed " << progress.getFailedCount()
              << ", unfinished " << progress.getUnfinishedCount() << ", not run " << notRun << " of " << total
              << " test(s); " << (wasStopped ? stopText(stoppedTest) : std::string("the run completed")) << "\n"
              << "counters: " << ZemDemo::countersText(countersOf(root.get())) << std::endl;

    // A stopped run is never a passed one, even when the stop came after the last point.
    int exitCode = progress.getPassedCount() == total && !wasStopped ? exitPassed : exitFailed;
    if (!saveProject(file, *root, outputPath))
        exitCode = exitError;

    if (options.reportFolder.empty())
        return exitCode;
    const std::string reportPath = writeReportXml(file, *root, options.reportFolder);
    if (reportPath.empty())
        return exitError;
    if (stylesheet.empty()) {
        printError("report.xsl is not found (give it with --xsl); report.html is not written");
        return exitCode;
    }
    const std::string htmlPath = (fs::path(options.reportFolder) / "report.html").string();
    std::string error;
    switch (ZemDemo::HtmlReport::render(stylesheet, reportPath, htmlPath, options.language == 1 ? "ru" : "en", error)) {
    case ZemDemo::HtmlReport::Outcome::Written:
        std::cout << "report HTML: " << htmlPath << std::endl;
        break;
    case ZemDemo::HtmlReport::Outcome::NoXsltproc:
        printError("xsltproc is not installed (package xsltproc); report.html is not written");
        break;
    case ZemDemo::HtmlReport::Outcome::Failed:
        printError(error);
        exitCode = exitError;
        break;
    }
    return exitCode;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        ZemDemo::RunnerOptions options;
        const std::string refusal =
            ZemDemo::parseRunnerOptions(std::vector<std::string>(argv + 1, argv + argc), options);
        if (!refusal.empty()) {
            printError(refusal);
            return exitError;
        }
        if (options.isHelp) {
            std::cout << ZemDemo::runnerUsage();
            return exitPassed;
        }
        ZemDemo::DeferredSignals::ignoreFileSizeSignal();
        // The language comes first: nodes take their texts when they are built.
        lng::language = options.language;
        ZemDemo::registerDemoTypes();
        return options.checkPath.empty() ? run(options) : checkOnly(options);
    }
    catch (const std::exception& error) {
        printError(error.what());
        return exitError;
    }
}
