#include "RunnerProcess.h"
#include "TemporaryFolder.h"
#include "containers/ProjectFile.h"
#include "containers/TestableContainer.h"
#include "core/tree/Node.h"
#include "relay/DemoRelay.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

// The runner's promises, each driven through zemtree-run as a child process on a variant of the sample project:
// no pass for what was not measured, no run that never ends, and messages that name what is wrong.

namespace fs = std::filesystem;
using ZemDemoTest::RunnerOutcome;
using ZemDemoTest::runRunner;

using ZemDemoTest::hasXsltproc;
using ZemDemoTest::parseCounters;
using ZemDemoTest::readFile;
using ZemDemoTest::writeFile;

namespace {

using TempFolder = ZemTreeTest::TemporaryFolder;

const char* const pickupPath = "Substation/Collection/Overcurrent/Tests/Pickup";
const char* const tripTimePath = "Substation/Collection/Overcurrent/Tests/TripTime";
const char* const zonePath = "Substation/Collection/Distance/Tests/Zone1";
const char* const contactPath = "Substation/Collection/Contacts/Tests/Follower";

// Sets a variable of the environment the runner inherits, for the life of the object.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const std::string& value) : _name(name)
    {
        if (!value.empty())
            setenv(_name, value.c_str(), 1);
    }
    ~EnvironmentVariable() { unsetenv(_name); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    const char* _name;
};

// An edit of the sample project's text.
using Edit = std::string (*)(const std::string&);

// Replaces the Value element of setting `setting` of test `test` (by id) with one carrying `attributes`.
std::string withSetting(const std::string& text, const std::string& test, const std::string& setting,
                        const std::string& attributes)
{
    const std::size_t testAt = text.find("<Node Id=\"" + test + "\" Class=");
    const std::size_t settingAt = text.find("<Node Id=\"" + setting + "\"", testAt);
    const std::size_t valueAt = text.find("<Value", settingAt);
    const std::size_t valueEnd = text.find("/>", valueAt);
    if (testAt == std::string::npos || settingAt == std::string::npos || valueEnd == std::string::npos)
        return text;
    return text.substr(0, valueAt) + "<Value " + attributes + text.substr(valueEnd);
}

std::string formulaAttributes(const std::string& formula)
{
    return "Source=\"Formula\" Formula=\"" + formula + "\" Data=\"1\"";
}

std::string unchanged(const std::string& text)
{
    return text;
}

ZemTree::TestCounters loadCounters(const std::string& path, const std::string& templateFolder)
{
    ZemDemo::registerDemoTypes();
    ZemTree::ProjectFile file(templateFolder);
    const std::unique_ptr<ZemTree::Node> root = file.load(path);
    return dynamic_cast<ZemTree::TestableContainer&>(*root).getCounters();
}

int tileCount(const std::string& html, const std::string& verdict)
{
    const std::regex tile("class=\"tile " + verdict + "\">\\s*<b>(\\d+)</b>");
    std::smatch match;
    return std::regex_search(html, match, tile) ? std::stoi(match[1]) : -1;
}

int lineCount(const std::string& text)
{
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

// One run of a variant and what every row of the tables asserts about it.
struct RunRow {
    const char* text;
    std::function<std::string(const std::string&)> edit;
    std::vector<std::string> arguments;
    // ZEMTREE_INTERRUPT_AFTER_POINTS, or empty.
    std::string interruptAfter;
    // Found in the runner's standard error; empty means standard error stays empty.
    std::string errLine;
    // Found in standard output.
    std::string outText;
    // Found in the saved project.
    std::string savedText;
    // Found in report.xml.
    std::string reportText;
};

// Runs `row` on a fresh copy of the sample files: exit 1, no test passed, the line on stderr, the saved project
// and the report (HTML too where xsltproc is installed) agreeing that nothing passed.
void expectNoPass(const RunRow& row)
{
    SCOPED_TRACE(row.text);
    TempFolder folder;
    ZemDemo::writeSampleFiles(folder.path());
    const std::string project = row.edit(readFile(folder.file("sample-project.xml")));
    folder.write("variant.xml", project);

    std::vector<std::string> arguments{"variant.xml", "--output", "saved.xml",   "--report",
                                       "report",      "--xsl",    ZTR_REPORT_XSL};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    const EnvironmentVariable hook("ZEMTREE_INTERRUPT_AFTER_POINTS", row.interruptAfter);
    const RunnerOutcome outcome = runRunner(arguments, folder.path());

    EXPECT_EQ(1, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_NE(std::string::npos, outcome.out.find("result: passed 0,")) << outcome.out;
    if (row.errLine.empty())
        EXPECT_EQ("", outcome.err);
    else
        EXPECT_NE(std::string::npos, outcome.err.find(row.errLine)) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.out.find(row.outText)) << outcome.out;

    const std::string saved = readFile(folder.file("saved.xml"));
    ASSERT_FALSE(saved.empty());
    EXPECT_NE(std::string::npos, saved.find(row.savedText));
    ZemTree::TestCounters printed;
    ASSERT_TRUE(parseCounters(outcome.out, printed)) << outcome.out;
    const ZemTree::TestCounters loaded = loadCounters(folder.file("saved.xml"), folder.path());
    EXPECT_EQ(printed.okCount, loaded.okCount);
    EXPECT_EQ(printed.failedCount, loaded.failedCount);
    EXPECT_EQ(printed.notTestedCount, loaded.notTestedCount);
    EXPECT_GT(loaded.notTestedCount + loaded.failedCount, 0u);

    EXPECT_NE(std::string::npos, readFile(folder.file("report/report.xml")).find(row.reportText));
    if (hasXsltproc()) {
        const std::string html = readFile(folder.file("report/report.html"));
        EXPECT_EQ(0, tileCount(html, "ok")) << html.substr(0, 200);
    }
}

} // namespace

// A test stopped before it measured every point, refused for its settings, or fed a tolerance that is not finite
// never passes.
TEST(RunnerGuaranteesTest, NothingPassesThatWasNotMeasuredAgainstFiniteSettings)
{
    const RunRow rows[] = {
        {"Ctrl-C after phase A of the pickup test",
         unchanged,
         {"--test", pickupPath},
         "1",
         "",
         std::string("the run was stopped during ") + pickupPath,
         "NotTestedPoints=\"2\" Stopped=\"true\"",
         "Stopped=\"true\""},
        {"Ctrl-C after 2 of the 4 multiples",
         unchanged,
         {"--test", tripTimePath},
         "2",
         "",
         std::string("the run was stopped during ") + tripTimePath,
         "NotTestedPoints=\"2\" Stopped=\"true\"",
         "NotTestedPoints=\"2\""},
        {"zone steps 0.4 with seed 3",
         [](const std::string& text) { return withSetting(text, "Zone1", "Steps", "Data=\"0.4\""); },
         {"--test", zonePath, "--seed", "3"},
         "",
         std::string("zemtree-run: refused: ") + zonePath + ": Setting Steps is 0.4; the limits are 1 to 20",
         "unfinished: Zone 1 reach",
         "NotTestedPoints=\"6\"",
         "NotTestedPoints=\"6\""},
        {"zone steps negative",
         [](const std::string& text) { return withSetting(text, "Zone1", "Steps", "Data=\"-2\""); },
         {"--test", zonePath},
         "",
         "Setting Steps is -2; the limits are 1 to 20",
         "unfinished",
         "",
         ""},
        {"zone steps nan by formula",
         [](const std::string& text) { return withSetting(text, "Zone1", "Steps", formulaAttributes("nan")); },
         {"--test", zonePath},
         "",
         "Setting Steps is not a finite number: nan",
         "unfinished",
         "",
         ""},
        {"tolerance 1/0 with seed 2",
         [](const std::string& text) { return withSetting(text, "Pickup", "Tolerance", formulaAttributes("1/0")); },
         {"--test", pickupPath, "--seed", "2"},
         "",
         std::string("refused: ") + pickupPath + ": Setting Tolerance is not a finite number: inf",
         "unfinished",
         "NotTestedPoints=\"3\"",
         "NotTestedPoints=\"3\""},
        {"tolerance 10^400",
         [](const std::string& text) { return withSetting(text, "Pickup", "Tolerance", formulaAttributes("10^400")); },
         {"--test", pickupPath, "--seed", "2"},
         "",
         "Setting Tolerance is not a finite number: inf",
         "",
         "",
         ""},
        {"tolerance exp(1e10)",
         [](const std::string& text) {
             return withSetting(text, "Pickup", "Tolerance", formulaAttributes("exp(1e10)"));
         },
         {"--test", pickupPath, "--seed", "2"},
         "",
         "Setting Tolerance is not a finite number: inf",
         "",
         "",
         ""},
        // The reader refuses the value and the template's tolerance stands in, which finds seed 2's bad phase.
        {"tolerance inf as data with seed 2",
         [](const std::string& text) { return withSetting(text, "Pickup", "Tolerance", "Data=\"inf\""); },
         {"--test", pickupPath, "--seed", "2"},
         "",
         "Setting Tolerance is not a finite number: inf",
         "FAILED: Pickup current",
         "",
         ""},
        {"tolerance -inf as data with seed 2",
         [](const std::string& text) { return withSetting(text, "Pickup", "Tolerance", "Data=\"-inf\""); },
         {"--test", pickupPath, "--seed", "2"},
         "",
         "Setting Tolerance is not a finite number: -inf",
         "FAILED",
         "",
         ""},
        {"a cycle of three formulas",
         [](const std::string& text) {
             std::string edited = withSetting(text, "Pickup", "Tolerance", formulaAttributes("{../Step}*2"));
             edited = withSetting(edited, "Pickup", "Step", formulaAttributes("{../RampStart}/100"));
             return withSetting(edited, "Pickup", "RampStart", formulaAttributes("{../Tolerance}*10"));
         },
         {"--test", pickupPath},
         "",
         std::string("refused: ") + pickupPath + ": Setting Tolerance: Circular reference",
         "unfinished",
         "",
         ""},
    };
    for (const RunRow& row : rows)
        expectNoPass(row);
}

// Settings that would keep a test ramping or waiting for hours are refused by name and limit, by --check and by
// the run, which ends at once without driving the relay.
TEST(RunnerGuaranteesTest, SettingsThatWouldNeverEndAreRefusedByCheckAndRun)
{
    const struct {
        const char* text;
        std::function<std::string(const std::string&)> edit;
        const char* test;
        std::string problem;
    } rows[] = {
        {"step 1e-9 as data",
         [](const std::string& text) { return withSetting(text, "Pickup", "Step", "Data=\"1e-9\""); }, pickupPath,
         "Setting Step is 1e-09 %: the ramp would take 3e+10 steps; the limit is 10000 steps"},
        {"step 1e-300 by formula",
         [](const std::string& text) { return withSetting(text, "Pickup", "Step", formulaAttributes("1e-300")); },
         pickupPath, "Setting Step is 1e-300 %: the ramp would take"},
        {"ramp start -1e308",
         [](const std::string& text) { return withSetting(text, "Pickup", "RampStart", "Data=\"-1e308\""); },
         pickupPath, "Setting RampStart is -1e+308 %; the limits are 0 to 1000 %"},
        {"multiple 1.0000001",
         [](const std::string& text) {
             return std::regex_replace(text, std::regex("Multiples=\"[^\"]*\""), "Multiples=\"2;1.0000001\"");
         },
         tripTimePath, "Setting Multiples: 1.0000001 x pickup expects a trip after 7"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        TempFolder folder;
        ZemDemo::writeSampleFiles(folder.path());
        const std::string original = readFile(folder.file("sample-project.xml"));
        const std::string variant = row.edit(original);
        ASSERT_NE(original, variant);
        folder.write("variant.xml", variant);
        const std::string line = std::string(row.test) + ": " + row.problem;

        const RunnerOutcome check = runRunner({"--check", "variant.xml"}, folder.path());
        EXPECT_EQ(1, check.exitCode);
        EXPECT_EQ(0u, check.err.find(line)) << check.err;
        EXPECT_EQ(1, lineCount(check.err)) << check.err;

        // The runner's own time-out (a minute) fails the row if the test hangs.
        const RunnerOutcome run = runRunner(
            {"variant.xml", "--test", row.test, "--output", "saved.xml", "--report", "report", "--xsl", ZTR_REPORT_XSL},
            folder.path());
        EXPECT_EQ(1, run.exitCode) << run.out << run.err;
        EXPECT_EQ(0u, run.err.rfind("zemtree-run: refused: " + line, 0)) << run.err;
        EXPECT_EQ(1, lineCount(run.err)) << run.err;
        EXPECT_NE(std::string::npos, run.out.find("Refused: " + row.problem)) << run.out;
        const ZemTree::TestCounters loaded = loadCounters(folder.file("saved.xml"), folder.path());
        EXPECT_EQ(0u, loaded.okCount + loaded.failedCount);
        EXPECT_TRUE(fs::is_regular_file(folder.file("report/report.xml")));
    }
}

// What --check and the command line say: every unit in error by its path, whole path segments for --test, one
// value per option, state lines in the chosen language.
TEST(RunnerGuaranteesTest, MessagesNameWhatIsWrong)
{
    const struct {
        const char* text;
        std::function<std::string(const std::string&)> edit;
        std::vector<std::string> arguments;
        int exitCode;
        // Found in standard error; empty means it stays empty.
        std::string errLine;
        std::string outText;
        bool isSaved;
    } rows[] = {
        {"--check names a formula error by the unit's path",
         [](const std::string& text) { return withSetting(text, "Pickup", "Step", formulaAttributes("12 + * 3")); },
         {"--check", "variant.xml"},
         1,
         std::string(pickupPath) + "/Settings/Step: Unexpected '*' at position 5\n",
         "1 problem(s)",
         false},
        {"--check names each unit of a cycle",
         [](const std::string& text) {
             std::string edited = withSetting(text, "Zone1", "Tolerance", formulaAttributes("{../Steps}"));
             return withSetting(edited, "Zone1", "Steps", formulaAttributes("{../Tolerance}"));
         },
         {"--check", "variant.xml"},
         1,
         std::string(zonePath) + "/Settings/Steps: Circular reference",
         "2 problem(s)",
         false},
        {"--check passes the sample", unchanged, {"--check", "variant.xml"}, 0, "", "loads without problems", false},
        {"a --test that ends inside a segment",
         unchanged,
         {"variant.xml", "--test", "Substation/Collection/Overcurrent/Tests/Pick", "--output", "saved.xml"},
         2,
         "zemtree-run: --test 'Substation/Collection/Overcurrent/Tests/Pick' selects no chosen test\n",
         "",
         false},
        {"a --test of a whole protection",
         unchanged,
         {"variant.xml", "--test", "Substation/Collection/Overcurrent", "--output", "saved.xml"},
         0,
         "",
         "running 2 test(s)",
         true},
        {"--test given twice",
         unchanged,
         {"variant.xml", "--test", pickupPath, "--test", contactPath, "--output", "saved.xml"},
         0,
         "",
         "running 2 test(s)",
         true},
        {"--seed given twice",
         unchanged,
         {"variant.xml", "--seed", "1", "--seed", "2", "--output", "saved.xml"},
         2,
         "zemtree-run: the option --seed is given twice\n",
         "",
         false},
        {"--new given twice",
         unchanged,
         {"--new", "--new", "--output", "saved.xml"},
         2,
         "zemtree-run: the option --new is given twice\n",
         "",
         false},
        {"Repetitions=nan as data",
         [](const std::string& text) { return withSetting(text, "Follower", "Repetitions", "Data=\"nan\""); },
         {"--check", "variant.xml"},
         1,
         "Setting Repetitions is not a finite number: nan",
         "",
         false},
        {"a setting beyond double's range reads as not finite",
         [](const std::string& text) { return withSetting(text, "Pickup", "Tolerance", "Data=\"1e999\""); },
         {"--check", "variant.xml"},
         1,
         "Setting Tolerance is not a finite number: 1e999",
         "",
         false},
        {"Repetitions=nan by formula",
         [](const std::string& text) { return withSetting(text, "Follower", "Repetitions", formulaAttributes("nan")); },
         {"variant.xml", "--test", contactPath, "--output", "saved.xml"},
         1,
         std::string("zemtree-run: refused: ") + contactPath + ": Setting Repetitions is not a finite number: nan\n",
         "unfinished: Follower contact",
         true},
        {"--set Repetitions=nan",
         unchanged,
         {"variant.xml", "--test", contactPath, "--set", "Repetitions=nan", "--output", "saved.xml"},
         2,
         "zemtree-run: --set Repetitions=nan: the value is not a finite number\n",
         "",
         false},
        {"--set of a setting no chosen test has",
         unchanged,
         {"variant.xml", "--test", contactPath, "--set", "Steps=3", "--output", "saved.xml"},
         2,
         "zemtree-run: --set Steps: no chosen test has such a setting\n",
         "",
         false},
        {"--set given twice, by id and by path",
         unchanged,
         {"variant.xml", "--test", contactPath, "--set", "Repetitions=1", "--set",
          std::string(contactPath) + "/Settings/Timeout=0.5", "--output", "saved.xml"},
         0,
         "",
         "passed: Follower contact (ok 1, failed 0, not tested 0)",
         true},
        {"--set beyond a limit is refused by the test",
         unchanged,
         {"variant.xml", "--test", zonePath, "--set", "Steps=0.4", "--output", "saved.xml"},
         1,
         std::string("zemtree-run: refused: ") + zonePath + ": Setting Steps is 0.4; the limits are 1 to 20\n",
         "unfinished: Zone 1 reach",
         true},
        {"state lines in Russian",
         unchanged,
         {"variant.xml", "--test", pickupPath, "--lang", "ru", "--output", "saved.xml"},
         0,
         "",
         "Фаза A: подъём от 0.900 А",
         true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        TempFolder folder;
        ZemDemo::writeSampleFiles(folder.path());
        folder.write("variant.xml", row.edit(readFile(folder.file("sample-project.xml"))));
        std::vector<std::string> arguments = row.arguments;
        // A run that saves reports too; a refused command line writes neither.
        if (arguments.front() != "--check")
            arguments.insert(arguments.end(), {"--report", "report", "--xsl", ZTR_REPORT_XSL});
        const RunnerOutcome outcome = runRunner(arguments, folder.path());
        EXPECT_EQ(row.exitCode, outcome.exitCode) << outcome.out << outcome.err;
        if (row.errLine.empty())
            EXPECT_EQ("", outcome.err);
        else
            EXPECT_NE(std::string::npos, outcome.err.find(row.errLine)) << outcome.err;
        EXPECT_NE(std::string::npos, outcome.out.find(row.outText)) << outcome.out;
        EXPECT_EQ(row.isSaved, fs::exists(folder.file("saved.xml")));
        EXPECT_EQ(row.isSaved, fs::exists(folder.file("report/report.xml")));
    }
}

// A stop that reaches a test after its last point leaves that test passed, but the run is still a stopped one:
// exit 1, and the output and the report say after which test it ended.
TEST(RunnerGuaranteesTest, StopBetweenTestsSaysWhereTheRunEnded)
{
    TempFolder folder;
    ZemDemo::writeSampleFiles(folder.path());
    // The pickup test measures three phases: the stop comes with its last one, before the trip time test.
    const EnvironmentVariable hook("ZEMTREE_INTERRUPT_AFTER_POINTS", "3");
    const RunnerOutcome outcome = runRunner({"sample-project.xml", "--test", pickupPath, "--test", tripTimePath,
                                             "--output", "saved.xml", "--report", "report", "--xsl", ZTR_REPORT_XSL},
                                            folder.path());
    EXPECT_EQ(1, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_EQ("", outcome.err);
    EXPECT_NE(std::string::npos, outcome.out.find("passed: Pickup current")) << outcome.out;
    EXPECT_NE(std::string::npos,
              outcome.out.find("not run 1 of 2 test(s); the run was stopped after " + std::string(pickupPath)))
        << outcome.out;
    // The pickup test lost nothing; the trip time test never began.
    const std::string saved = readFile(folder.file("saved.xml"));
    EXPECT_EQ(std::string::npos, saved.find("NotTestedPoints"));
    EXPECT_EQ(std::string::npos, saved.find("Stopped=\"true\""));
    EXPECT_NE(std::string::npos, readFile(folder.file("report/report.xml")).find("StoppedAfter=\"true\""));
    if (hasXsltproc()) {
        const std::string html = readFile(folder.file("report/report.html"));
        EXPECT_TRUE(std::regex_search(html, std::regex("The run was stopped after the test <a [^>]*>Pickup current")));
    }
}

// The HTML report of a project with 5,000 tests: counting the verdicts takes no recursion as deep as the tests
// are many.
TEST(RunnerGuaranteesTest, ReportOfFiveThousandTestsRenders)
{
    if (!hasXsltproc())
        GTEST_SKIP() << "xsltproc is not installed";
    TempFolder folder;
    std::string tests;
    for (int i = 0; i < 5000; ++i) {
        const std::string state = i % 5 == 0 ? "?not ok" : "ok";
        tests += "<Node Id=\"T" + std::to_string(i) + "\" Description=\"Test " + std::to_string(i)
                 + "\" DataType=\"TestContainer\"><Node Id=\"Results\" DataType=\"ResultContainer\">"
                   "<Node Id=\"R\" DataType=\"ResultMultiNumeric\"><Items><Value Key=\"k\" State=\""
                 + state + "\">1</Value></Items></Node></Node></Node>";
    }
    // One test cut short: what it measured passed, but it is not passed.
    tests += "<Node Id=\"Cut\" Description=\"Cut short\" DataType=\"TestContainer\" NotTestedPoints=\"2\" "
             "Stopped=\"true\"><Node Id=\"Results\" DataType=\"ResultContainer\"><Node Id=\"R\" "
             "DataType=\"ResultMultiNumeric\"><Items><Value Key=\"k\" State=\"ok\">1</Value></Items></Node></Node>"
             "</Node>";
    folder.write("report.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Report><Node Id=\"Root\">"
                               "<Node Id=\"Collection\" DataType=\"CollectionContainer\">"
                                   + tests + "</Node></Node></Report>");
    const std::string command = "xsltproc -o '" + folder.file("report.html") + "' '" ZTR_REPORT_XSL "' '"
                                + folder.file("report.xml") + "' 2> '" + folder.file("xsltproc.err") + "'";
    ASSERT_EQ(0, std::system(command.c_str())) << readFile(folder.file("xsltproc.err"));
    const std::string html = readFile(folder.file("report.html"));
    EXPECT_EQ(4000, tileCount(html, "ok"));
    EXPECT_EQ(1000, tileCount(html, "notok"));
    EXPECT_EQ(0, tileCount(html, "error"));
    EXPECT_EQ(1, tileCount(html, "empty"));
    EXPECT_TRUE(std::regex_search(html, std::regex("class=\"stopped\">The run was stopped during the test <a [^>]*>"
                                                   "Cut short</a>: 2 points not tested")));
}
