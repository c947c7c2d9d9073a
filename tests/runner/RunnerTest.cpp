#include "RunnerProcess.h"
#include "TemporaryFolder.h"
#include "containers/ProjectFile.h"
#include "containers/TestableContainer.h"
#include "core/tree/Node.h"
#include "relay/DemoRelay.h"

#include <cairomm/surface.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <regex>
#include <set>
#include <signal.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;
using ZemDemoTest::RunnerOutcome;
using ZemDemoTest::RunnerProcess;
using ZemDemoTest::runRunner;

using ZemDemoTest::hasXsltproc;
using ZemDemoTest::parseCounters;
using ZemDemoTest::readFile;
using ZemDemoTest::writeFile;

namespace {

using TempFolder = ZemTreeTest::TemporaryFolder;

// Loads a saved project the way the runner does and returns its root's counters.
ZemTree::TestCounters loadCounters(const std::string& path, const std::string& templateFolder = "")
{
    ZemDemo::registerDemoTypes();
    ZemTree::ProjectFile file(templateFolder);
    const std::unique_ptr<ZemTree::Node> root = file.load(path);
    auto* testable = dynamic_cast<ZemTree::TestableContainer*>(root.get());
    if (testable == nullptr)
        throw std::runtime_error("the root of " + path + " is not testable");
    return testable->getCounters();
}

// The exit code the runner owes for a saved project whose tests were all chosen.
int expectedExitCode(const ZemTree::TestCounters& counters)
{
    return counters.failedCount == 0 && counters.notTestedCount == 0 ? 0 : 1;
}

void expectSameCounters(const ZemTree::TestCounters& printed, const ZemTree::TestCounters& loaded)
{
    EXPECT_EQ(printed.okCount, loaded.okCount);
    EXPECT_EQ(printed.failedCount, loaded.failedCount);
    EXPECT_EQ(printed.notTestedCount, loaded.notTestedCount);
}

} // namespace

TEST(RunnerTest, RefusesBadCommandLinesAndFilesWithOneLineAndCodeTwo)
{
    TempFolder folder;
    writeFile(folder.file("malformed.xml"), "<Project><Node Id=\"Root\"");
    writeFile(folder.file("empty.xml"), "");
    writeFile(folder.file("foreign.xml"), "<Project><Node Id=\"Root\" Class=\"No::SuchClass\"/></Project>");
    writeFile(folder.file("entities.xml"), "<!DOCTYPE Project [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>"
                                           "<Project><Node Id=\"Root\" Description=\"&x;\"/></Project>");
    std::string deep = "<Project>";
    for (int i = 0; i < 5000; ++i)
        deep += "<a>";
    writeFile(folder.file("deep.xml"), deep);
    const std::string missing = folder.file("missing.xml");

    const std::vector<std::vector<std::string>> rows = {
        {"--bogus"},
        {"--new", "--seed", "x12"},
        {"--new", "--seed"},
        {"--new", "--curve", "steep"},
        {"--new", "--relay-set", "overcurrent.curve=steep"},
        {"--new", "--relay-set", "overcurrent.reach=1"},
        {"--new", "--relay-set", "distance.reachR=far"},
        {"--new", "--relay-set", "contacts.delay"},
        {"--new", "--lang", "de"},
        {"--new", "--time-scale", "0"},
        {},
        {"--new", missing},
        {"a.xml", "b.xml"},
        {missing},
        {folder.file("malformed.xml")},
        {"--check", missing},
        {"--check", folder.file("malformed.xml")},
        {"--check", folder.file("empty.xml")},
        {"--check", folder.file("foreign.xml")},
        {"--check", folder.file("entities.xml")},
        {"--check", folder.file("deep.xml")},
        {"--new", "--test", "NoSuchPath/", "--output", folder.file("p.xml")},
        {"--new", "--templates", folder.file("no-such-folder"), "--output", folder.file("p.xml")},
        {"--new", "--report", folder.file("r"), "--xsl", folder.file("no.xsl"), "--output", folder.file("p.xml")},
    };
    for (const std::vector<std::string>& arguments : rows) {
        std::string joined;
        for (const std::string& argument : arguments)
            joined += argument + " ";
        SCOPED_TRACE(joined);
        const RunnerOutcome outcome = runRunner(arguments, folder.path());
        EXPECT_EQ(2, outcome.exitCode);
        EXPECT_EQ(0u, outcome.err.rfind("zemtree-run: ", 0)) << outcome.err;
        EXPECT_EQ(1, std::count(outcome.err.begin(), outcome.err.end(), '\n')) << outcome.err;
    }
    // Nothing is written for a refused command line.
    EXPECT_FALSE(fs::exists(folder.file("p.xml")));
    EXPECT_FALSE(fs::exists(folder.file("r")));
}

TEST(RunnerTest, HelpNamesEveryOptionAndTheExitCodes)
{
    TempFolder folder;
    const RunnerOutcome outcome = runRunner({"--help"}, folder.path());
    EXPECT_EQ(0, outcome.exitCode);
    for (const char* option : {"--new", "--templates", "--test", "--seed", "--curve", "--relay-set", "--time-scale",
                               "--output", "--report", "--xsl", "--lang", "--check", "--help", "exit codes"}) {
        SCOPED_TRACE(option);
        EXPECT_NE(std::string::npos, outcome.out.find(option));
    }
}

TEST(RunnerTest, NewProjectRunSavesTheProjectAndWritesTheReport)
{
    TempFolder folder;
    const RunnerOutcome outcome =
        runRunner({"--new", "--seed", "3", "--output", "out/project.xml", "--report", "report"}, folder.path());
    ASSERT_TRUE(outcome.exitCode == 0 || outcome.exitCode == 1) << outcome.exitCode << "\n" << outcome.err;
    EXPECT_NE(std::string::npos, outcome.out.find("running 4 test(s)"));
    EXPECT_NE(std::string::npos, outcome.out.find("test 4/4"));

    ZemTree::TestCounters printed;
    ASSERT_TRUE(parseCounters(outcome.out, printed)) << outcome.out;
    const ZemTree::TestCounters loaded = loadCounters(folder.file("out/project.xml"));
    expectSameCounters(printed, loaded);
    EXPECT_EQ(0u, loaded.notTestedCount);
    EXPECT_EQ(expectedExitCode(loaded), outcome.exitCode);

    EXPECT_TRUE(fs::is_regular_file(folder.file("report/report.xml")));
    std::vector<std::string> images;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.file("report/images")))
        if (entry.path().extension() == ".png")
            images.push_back(entry.path().filename().string());
    EXPECT_FALSE(images.empty());
    EXPECT_NE(std::string::npos, outcome.out.find("project: out/project.xml"));
    EXPECT_NE(std::string::npos, outcome.out.find("report XML: report/report.xml"));

    if (!hasXsltproc()) {
        EXPECT_NE(std::string::npos, outcome.err.find("xsltproc"));
        GTEST_SKIP() << "xsltproc is not installed; the HTML report is not checked";
    }
    EXPECT_NE(std::string::npos, outcome.out.find("report HTML: report/report.html"));
    const std::string html = readFile(folder.file("report/report.html"));
    for (const std::string& image : images) {
        SCOPED_TRACE(image);
        EXPECT_NE(std::string::npos, html.find("src=\"images/" + image + "\""));
    }
    // The summary counts the four tests; every test has its section.
    EXPECT_NE(std::string::npos, html.find("<b>4</b>"));
    for (const char* test : {"Pickup current", "Trip time", "Zone 1 reach", "Follower contact"}) {
        SCOPED_TRACE(test);
        EXPECT_NE(std::string::npos, html.find(test));
    }
}

TEST(RunnerTest, ExitCodeFollowsTheVerdictsOverSeveralSeeds)
{
    TempFolder folder;
    // With the sample relay's noise seed 1 passes everything and seed 2 fails a test, so both codes are met.
    std::set<int> exitCodes;
    for (const char* seed : {"1", "2", "5"}) {
        SCOPED_TRACE(seed);
        const std::string output = std::string("project-") + seed + ".xml";
        const RunnerOutcome outcome = runRunner({"--new", "--seed", seed, "--output", output}, folder.path());
        ZemTree::TestCounters printed;
        ASSERT_TRUE(parseCounters(outcome.out, printed)) << outcome.out << outcome.err;
        const ZemTree::TestCounters loaded = loadCounters(folder.file(output));
        expectSameCounters(printed, loaded);
        EXPECT_EQ(expectedExitCode(loaded), outcome.exitCode);
        EXPECT_EQ(loaded.failedCount > 0, outcome.out.find("FAILED") != std::string::npos);
        exitCodes.insert(outcome.exitCode);
    }
    EXPECT_EQ((std::set<int>{0, 1}), exitCodes);
}

TEST(RunnerTest, TestPathsChooseTheTestsToRun)
{
    TempFolder folder;
    const RunnerOutcome outcome =
        runRunner({"--new", "--test", "Substation/Collection/Distance", "--output", "p.xml"}, folder.path());
    ASSERT_TRUE(outcome.exitCode == 0 || outcome.exitCode == 1) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.out.find("running 1 test(s)")) << outcome.out;
    EXPECT_NE(std::string::npos, outcome.out.find("Zone 1 reach"));
    EXPECT_EQ(std::string::npos, outcome.out.find("Trip time"));
    // The three tests left out keep no result.
    const ZemTree::TestCounters loaded = loadCounters(folder.file("p.xml"));
    EXPECT_EQ(3u, loaded.notTestedCount);
    EXPECT_EQ(1u, loaded.okCount + loaded.failedCount);
}

TEST(RunnerTest, InterruptStopsTheRunAndStillSaves)
{
    TempFolder folder;
    // Real-time relay: the run lasts seconds, so the interrupt lands in the middle of it.
    RunnerProcess process({"--new", "--time-scale", "1", "--output", "p.xml", "--report", "report"}, folder.path());
    ASSERT_TRUE(process.waitForOutput("test running", std::chrono::seconds(30))) << process.getOut();
    process.sendSignal(SIGINT);
    const int exitCode = process.finish(std::chrono::seconds(60));

    EXPECT_NE(std::string::npos, process.getOut().find("stopping")) << process.getOut();
    EXPECT_NE(std::string::npos, process.getOut().find("the run was stopped"));
    ASSERT_TRUE(fs::is_regular_file(folder.file("p.xml"))) << process.getErr();
    EXPECT_TRUE(fs::is_regular_file(folder.file("report/report.xml")));
    ZemTree::TestCounters printed;
    ASSERT_TRUE(parseCounters(process.getOut(), printed));
    const ZemTree::TestCounters loaded = loadCounters(folder.file("p.xml"));
    expectSameCounters(printed, loaded);
    EXPECT_GT(loaded.notTestedCount, 0u);
    EXPECT_EQ(expectedExitCode(loaded), exitCode);
}

TEST(RunnerTest, ProjectFromFilesRunsAndChecks)
{
    TempFolder folder;
    ZemDemo::writeSampleFiles(folder.path());
    const std::string sample = folder.file("sample-project.xml");

    const RunnerOutcome check = runRunner({"--check", sample}, folder.path());
    EXPECT_EQ(0, check.exitCode) << check.err;
    EXPECT_TRUE(check.err.empty()) << check.err;

    // A bad value loads with a problem, told on its own line.
    std::string bad = readFile(sample);
    const std::size_t data = bad.find("Data=\"");
    ASSERT_NE(std::string::npos, data);
    bad.insert(data + 6, "not a number ");
    writeFile(folder.file("bad.xml"), bad);
    const RunnerOutcome badCheck = runRunner({"--check", "bad.xml"}, folder.path());
    EXPECT_EQ(1, badCheck.exitCode) << badCheck.err;
    EXPECT_NE(std::string::npos, badCheck.err.find("not a number")) << badCheck.err;
    EXPECT_EQ(1, std::count(badCheck.err.begin(), badCheck.err.end(), '\n')) << badCheck.err;

    // The project is saved over itself by default, its templates found beside it.
    const std::string before = readFile(sample);
    const RunnerOutcome outcome = runRunner({sample}, folder.path());
    ASSERT_TRUE(outcome.exitCode == 0 || outcome.exitCode == 1) << outcome.err;
    EXPECT_NE(before, readFile(sample));
    EXPECT_EQ(expectedExitCode(loadCounters(sample, folder.path())), outcome.exitCode);
}

TEST(RunnerTest, UnknownTemplateStillLoadsRunsAndKeepsItsName)
{
    TempFolder folder;
    ZemDemo::writeSampleFiles(folder.path());
    std::string text = readFile(folder.file("sample-project.xml"));
    // Points the pickup test at a template that does not exist, whether or not it names one already.
    const std::regex pickup("(<Node Id=\"Pickup\" Class=\"[^\"]*\")( TemplateXml=\"[^\"]*\")?");
    const std::string edited =
        std::regex_replace(text, pickup, "$1 TemplateXml=\"NoSuchTemplate\"", std::regex_constants::format_first_only);
    ASSERT_NE(text, edited);
    writeFile(folder.file("edited.xml"), edited);

    // The file loads, and the missing template is its one problem.
    const RunnerOutcome check = runRunner({"--check", "edited.xml"}, folder.path());
    EXPECT_EQ(1, check.exitCode) << check.err;
    EXPECT_NE(std::string::npos, check.err.find("'NoSuchTemplate'")) << check.err;
    EXPECT_EQ(1, std::count(check.err.begin(), check.err.end(), '\n')) << check.err;

    const RunnerOutcome outcome = runRunner({"edited.xml", "--output", "saved.xml"}, folder.path());
    ASSERT_TRUE(outcome.exitCode == 0 || outcome.exitCode == 1) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.out.find("running 4 test(s)")) << outcome.out;
    EXPECT_NE(std::string::npos, readFile(folder.file("saved.xml")).find("TemplateXml=\"NoSuchTemplate\""));
    EXPECT_EQ(expectedExitCode(loadCounters(folder.file("saved.xml"), folder.path())), outcome.exitCode);
}

TEST(RunnerTest, WithoutXsltprocTheReportIsWrittenWithoutHtml)
{
    TempFolder folder;
    const RunnerOutcome outcome =
        runRunner({"--new", "--output", "p.xml", "--report", "report"}, folder.path(), folder.file("no-bin"));
    ASSERT_TRUE(outcome.exitCode == 0 || outcome.exitCode == 1) << outcome.err;
    EXPECT_EQ(expectedExitCode(loadCounters(folder.file("p.xml"))), outcome.exitCode);
    EXPECT_TRUE(fs::is_regular_file(folder.file("report/report.xml")));
    EXPECT_FALSE(fs::exists(folder.file("report/report.html")));
    EXPECT_NE(std::string::npos, outcome.err.find("xsltproc is not installed")) << outcome.err;
}

namespace {

// A report with one test per verdict: passed, failed, in error (a state text of its own), not run (no value),
// and one whose item is empty (IsValid written).
const char* const verdictReport = R"(<?xml version="1.0" encoding="UTF-8"?>
<Report><Node Id="Root" Description="Bay 7">
  <Node Id="Collection" DataType="CollectionContainer">
    <Node Id="P" Description="Guard">
      <Node Id="Tests" DataType="TestCollectionContainer">
        <Node Id="A" Description="Test passes" DataType="TestContainer" StartDate="01.02.2026" StartTime="10:00:00"
              EndDate="01.02.2026" EndTime="10:00:05" ElapsedTime="00:00:05">
          <Node Id="Results" DataType="ResultContainer">
            <Node Id="R" Description="Level" Measure="A" DataType="ResultMultiNumeric"><Value>1</Value>
              <Items><Value Key="k1" State="ok" Deviation="+1 %">1.01</Value></Items></Node></Node></Node>
        <Node Id="B" Description="Test fails" DataType="TestContainer">
          <Node Id="Results" DataType="ResultContainer">
            <Node Id="R" Description="Level" DataType="ResultMultiNumeric">
              <Items><Value Key="k1" State="ok">1</Value><Value Key="k2" State="?not ok">9</Value></Items></Node></Node></Node>
        <Node Id="C" Description="Test errs" DataType="TestContainer">
          <Node Id="Results" DataType="ResultContainer">
            <Node Id="R" Description="Level" DataType="ResultMultiString">
              <Items><Value Key="k1" State="Timeout of the relay">x</Value></Items></Node></Node></Node>
        <Node Id="D" Description="Test not run" DataType="TestContainer">
          <Node Id="Results" DataType="ResultContainer">
            <Node Id="R" Description="Level" DataType="ResultMultiNumeric"/></Node></Node>
        <Node Id="E" Description="Test empty" DataType="TestContainer">
          <Node Id="Results" DataType="ResultContainer">
            <Node Id="R" Description="Curve" Graph="image_0007.png" DataType="ResultMultiGraph">
              <Items><Value Key="k1" State="not tested" IsValid="false"/></Items></Node></Node></Node>
      </Node></Node></Node></Node></Report>
)";

int tileCount(const std::string& html, const std::string& verdict)
{
    const std::regex tile("class=\"tile " + verdict + "\">\\s*<b>(\\d+)</b>");
    std::smatch match;
    return std::regex_search(html, match, tile) ? std::stoi(match[1]) : -1;
}

} // namespace

TEST(RunnerTest, StylesheetColoursEachVerdict)
{
    if (!hasXsltproc())
        GTEST_SKIP() << "xsltproc is not installed";
    TempFolder folder;
    writeFile(folder.file("report.xml"), verdictReport);
    const std::string command =
        "xsltproc -o '" + folder.file("report.html") + "' '" ZTR_REPORT_XSL "' '" + folder.file("report.xml") + "'";
    ASSERT_EQ(0, std::system(command.c_str()));
    const std::string html = readFile(folder.file("report.html"));

    const struct {
        const char* verdict;
        int tests;
    } rows[] = {{"ok", 1}, {"notok", 1}, {"error", 1}, {"empty", 2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.verdict);
        EXPECT_EQ(row.tests, tileCount(html, row.verdict));
    }
    // Each test's section carries its verdict; the guard above them takes the worst.
    for (const char* expected :
         {"class=\"node notok\"[^>]*><h3>\\s*<span>Guard", "class=\"node ok\"[^>]*><h4>\\s*<span>Test passes",
          "class=\"node notok\"[^>]*><h4>\\s*<span>Test fails", "class=\"node error\"[^>]*><h4>\\s*<span>Test errs",
          "class=\"node empty\"[^>]*><h4>\\s*<span>Test not run", "class=\"node empty\"[^>]*><h4>\\s*<span>Test empty",
          "<tr class=\"notok\">\\s*<td>k2</td>", "src=\"images/image_0007.png\""}) {
        SCOPED_TRACE(expected);
        EXPECT_TRUE(std::regex_search(html, std::regex(expected)));
    }
}

// The HTML report as a browser shows it: a screenshot of the page in headless Chromium is no blank page. Skipped
// where Chromium is not installed.
TEST(RunnerTest, HtmlReportRendersInABrowser)
{
    if (!fs::exists("/usr/bin/chromium"))
        GTEST_SKIP() << "no /usr/bin/chromium";
    TempFolder folder;
    const RunnerOutcome run = runRunner(
        {"--new", "--seed", "2", "--output", folder.file("p.xml"), "--report", folder.file("report")}, folder.path());
    ASSERT_EQ(1, run.exitCode) << run.err;
    ASSERT_TRUE(fs::exists(folder.file("report/report.html")));

    const std::string shot = folder.file("shot.png");
    const std::string command = "/usr/bin/chromium --headless --no-sandbox --disable-gpu --disable-quic "
                                "--no-first-run --disable-background-networking --disable-component-update "
                                "--disable-sync --user-data-dir="
                                + folder.file("profile") + " --window-size=1000,1400 --screenshot=" + shot + " file://"
                                + folder.file("report/report.html") + " > /dev/null 2>&1";
    ASSERT_EQ(0, std::system(command.c_str()));
    const Cairo::RefPtr<Cairo::ImageSurface> image = Cairo::ImageSurface::create_from_png(shot);
    ASSERT_EQ(1000, image->get_width());

    // A page with tables, coloured badges and pictures has many colours and much that is not background.
    std::set<std::uint32_t> colours;
    std::size_t inked = 0;
    const unsigned char* const data = image->get_data();
    const std::uint32_t background = *reinterpret_cast<const std::uint32_t*>(data);
    for (int y = 0; y < image->get_height(); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(data + y * image->get_stride());
        for (int x = 0; x < image->get_width(); ++x) {
            colours.insert(row[x] & 0xFFFFFFu);
            if ((row[x] & 0xFFFFFFu) != (background & 0xFFFFFFu))
                ++inked;
        }
    }
    EXPECT_GT(colours.size(), 200u);
    EXPECT_GT(inked, static_cast<std::size_t>(image->get_width() * image->get_height() / 10));
}
