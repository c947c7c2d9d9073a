// The runner sets the simulated relay from the project's protections, and from --relay-set where a relay set
// wrongly is wanted; a test whose expected value cannot be evaluated is refused and named by --check.

#include "RunnerProcess.h"
#include "TemporaryFolder.h"
#include "relay/DemoRelay.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

using ZemDemoTest::RunnerOutcome;
using ZemDemoTest::runRunner;

using ZemDemoTest::hasXsltproc;
using ZemDemoTest::parseCounters;
using ZemDemoTest::readFile;
using ZemDemoTest::writeFile;

namespace {

const std::string tripTimePath = "Substation/Collection/Overcurrent/Tests/TripTime";
const std::string pickupPath = "Substation/Collection/Overcurrent/Tests/Pickup";

// `text` with the first `from` after `after` replaced by `to`; unchanged when either is missing.
std::string replaced(std::string text, const std::string& after, const std::string& from, const std::string& to)
{
    const std::size_t start = text.find(after);
    const std::size_t at = start == std::string::npos ? start : text.find(from, start);
    if (at != std::string::npos)
        text.replace(at, from.size(), to);
    return text;
}

TEST(RunnerTestObject, TheRelayFollowsTheProjectUnlessSetOtherwise)
{
    struct Row {
        const char* text;
        // The overcurrent curve in the project.
        const char* curve;
        std::vector<std::string> arguments;
        int exitCode;
    };
    const std::vector<Row> rows = {
        {"project and relay very inverse", "very", {}, 0},
        {"relay set wrongly", "standard", {"--relay-set", "overcurrent.curve=very"}, 1},
        {"relay set wrongly by --curve", "standard", {"--curve", "extremely"}, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ZemTreeTest::TemporaryFolder folder;
        ZemDemo::writeSampleFiles(folder.path().string());
        const std::string project = replaced(readFile(folder.file("sample-project.xml")), "<Node Id=\"Curve\"",
                                             "Data=\"standard\"", std::string("Data=\"") + row.curve + "\"");
        writeFile(folder.file("variant.xml"), project);
        std::vector<std::string> arguments{"variant.xml", "--test", tripTimePath, "--output", "saved.xml"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const RunnerOutcome outcome = runRunner(arguments, folder.path().string());
        EXPECT_EQ(row.exitCode, outcome.exitCode) << outcome.out << outcome.err;
        const std::string counters = row.exitCode == 0 ? "counters: ok 1, failed 0" : "counters: ok 0, failed 1";
        EXPECT_NE(std::string::npos, outcome.out.find(counters)) << outcome.out;
    }
}

TEST(RunnerTestObject, ABrokenReferenceIsRefusedAndListedByItsPath)
{
    struct Row {
        const char* text;
        const char* formula;
        const char* message;
    };
    const std::vector<Row> rows = {
        {"a name that resolves nowhere", "{../../../../Settings/Pikcup}", "Unresolved reference"},
        {"a hand-edited syntax error", "{../../../../Settings/Pickup}*(", "Setting Pickup"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ZemTreeTest::TemporaryFolder folder;
        ZemDemo::writeSampleFiles(folder.path().string());
        const std::string project = replaced(readFile(folder.file("sample-project.xml")),
                                             "<Node Id=\"Pickup\" Class=", "Formula=\"{../../../../Settings/Pickup}\"",
                                             std::string("Formula=\"") + row.formula + "\"");
        writeFile(folder.file("variant.xml"), project);

        const RunnerOutcome check = runRunner({"--check", "variant.xml"}, folder.path().string());
        EXPECT_EQ(1, check.exitCode);
        EXPECT_NE(std::string::npos, check.err.find(pickupPath + "/Settings/Pickup: ")) << check.err;

        const RunnerOutcome run = runRunner({"variant.xml", "--test", pickupPath}, folder.path().string());
        EXPECT_EQ(1, run.exitCode);
        EXPECT_NE(std::string::npos, run.err.find("refused: " + pickupPath + ": Setting Pickup: ")) << run.err;
        EXPECT_NE(std::string::npos, run.err.find(row.message)) << run.err;
        EXPECT_NE(std::string::npos, run.out.find("Refused: Setting Pickup: ")) << run.out;
    }
}

// The report shows each protection's settings and each test's wiring as the project holds them.
TEST(RunnerTestObject, TheReportShowsTheTestObjectAndEachTestsWiring)
{
    ZemTreeTest::TemporaryFolder folder;
    ZemDemo::writeSampleFiles(folder.path().string());
    std::string project = readFile(folder.file("sample-project.xml"));
    project = replaced(project, "<Node Id=\"Curve\"", "Data=\"standard\"", "Data=\"very\"");
    project = replaced(project, "<Node Id=\"Follower\"", "<Value>BinaryInputs/Group 2/Input 1</Value>",
                       "<Value>BinaryInputs/Group 2/Input 3</Value>");
    writeFile(folder.file("variant.xml"), project);
    const RunnerOutcome outcome = runRunner(
        {"variant.xml", "--test", "Substation/Collection/Contacts", "--report", "report", "--output", "saved.xml"},
        folder.path().string());
    EXPECT_EQ(1, outcome.exitCode) << "the follower is wired to an input the relay leaves open";
    const std::string report = readFile(folder.file("report/report.xml"));
    for (const char* text : {"<Node Id=\"Curve\" Description=\"Curve\" Value=\"Very inverse\"",
                             "<Node Id=\"ReachR\" Description=\"Resistive reach\" Value=\"10\" Measure=",
                             "<Node Id=\"Delay\" Description=\"Follower delay\" Value=\"0.05\"",
                             "Description=\"Following input\" DataType=\"Contact\">Binary inputs / Group 2 / Input 3<",
                             "Description=\"Trip contact\" DataType=\"Contact\">Binary inputs / Group 1 / Input 1<",
                             "Formula=\"{../../../../Settings/TimeMultiplier}\""}) {
        SCOPED_TRACE(text);
        EXPECT_NE(std::string::npos, report.find(text));
    }
}

TEST(RunnerTestObject, AContactOnAChannelTheTestSetLacksIsListedAndRefused)
{
    ZemTreeTest::TemporaryFolder folder;
    ZemDemo::writeSampleFiles(folder.path().string());
    writeFile(folder.file("variant.xml"),
              replaced(readFile(folder.file("sample-project.xml")), "<Node Id=\"TripContact\"",
                       "<Value>BinaryInputs/Group 1/Input 1</Value>", "<Value>BinaryInputs/Group 9/Input 1</Value>"));
    const RunnerOutcome check = runRunner({"--check", "variant.xml"}, folder.path().string());
    EXPECT_EQ(1, check.exitCode);
    EXPECT_NE(std::string::npos, check.err.find(tripTimePath + "/Parameters/TripContact: ")) << check.err;

    const RunnerOutcome run = runRunner({"variant.xml", "--test", tripTimePath}, folder.path().string());
    EXPECT_EQ(1, run.exitCode);
    EXPECT_NE(std::string::npos, run.err.find("refused: " + tripTimePath + ": Wiring TripContact: ")) << run.err;
}

} // namespace
