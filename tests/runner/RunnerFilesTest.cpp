// The runner under careless and hostile use of its files: variants of the sample project, odd output targets,
// signals during a save, and the messages that tell what went wrong.

#include "RunnerProcess.h"
#include "TemporaryFolder.h"
#include "containers/ProjectFile.h"
#include "core/tree/Node.h"
#include "relay/DemoRelay.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <regex>
#include <signal.h>
#include <string>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <vector>

namespace fs = std::filesystem;
using ZemDemoTest::RunnerOutcome;
using ZemDemoTest::RunnerProcess;
using ZemDemoTest::runRunner;
using ZemTreeTest::TemporaryFolder;

using ZemDemoTest::hasXsltproc;
using ZemDemoTest::parseCounters;
using ZemDemoTest::readFile;
using ZemDemoTest::writeFile;

namespace {

const std::string testsPath = "Substation/Collection/Overcurrent/Tests";
const std::string pickupPath = testsPath + "/Pickup";

std::size_t countOf(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

std::size_t lineCount(const std::string& text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// The text of the element that starts at `start`, up to its end tag. The files are written by libxml2, which
// escapes '>' inside attribute values, so tags can be told by their angle brackets.
std::string elementAt(const std::string& text, std::size_t start)
{
    int depth = 0;
    std::size_t at = start;
    while ((at = text.find('<', at)) != std::string::npos) {
        const std::size_t end = text.find('>', at);
        if (end == std::string::npos)
            break;
        if (text[at + 1] == '/')
            --depth;
        else if (text[end - 1] != '/')
            ++depth;
        at = end + 1;
        if (depth == 0)
            return text.substr(start, at - start);
    }
    return std::string();
}

// The sample's pickup test element, the first with its key.
std::string pickupElement(const std::string& project)
{
    // The test, not the protection's setting of the same name before it.
    const std::size_t tests = project.find("<Node Id=\"Tests\"");
    const std::size_t start = tests == std::string::npos ? tests : project.find("<Node Id=\"Pickup\" ", tests);
    return start == std::string::npos ? std::string() : elementAt(project, start);
}

std::string replacedOnce(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    if (at == std::string::npos)
        throw std::runtime_error("the sample holds no " + from);
    return text.replace(at, from.size(), to);
}

// A folder with the sample project and its templates; `project` is the sample's text.
struct SampleFolder {
    TemporaryFolder folder;
    std::string project;

    SampleFolder()
    {
        ZemDemo::writeSampleFiles(folder.path().string());
        project = readFile(folder.file("sample-project.xml"));
    }
};

// Every line of stderr that holds `part`.
std::size_t linesWith(const std::string& err, const std::string& part)
{
    std::size_t count = 0;
    std::string::size_type start = 0;
    while (start < err.size()) {
        std::size_t end = err.find('\n', start);
        if (end == std::string::npos)
            end = err.size();
        if (err.substr(start, end - start).find(part) != std::string::npos)
            ++count;
        start = end + 1;
    }
    return count;
}

bool hasTemporaryFile(const fs::path& folder)
{
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".tmp")
            return true;
    return false;
}

} // namespace

// Nodes that cannot be read survive the run's save where they stood, and the warnings name them by path. Only the
// distance test runs, so the verdict does not depend on the damaged ones.
TEST(RunnerFilesTest, UnreadableNodesAreKeptAndNamed)
{
    struct Row {
        const char* text;
        std::function<std::string(const std::string&)> edit;
        std::vector<std::string> warnings;
        std::function<void(const std::string& edited, const std::string& saved)> check;
    };
    const auto keepsPickup = [](const std::string& edited, const std::string& saved) {
        const std::string element = pickupElement(edited);
        ASSERT_FALSE(element.empty());
        EXPECT_EQ(1u, countOf(saved, element));
        // In its place: before the trip time test, as in the file.
        EXPECT_LT(saved.find(element), saved.find("<Node Id=\"TripTime\""));
    };
    const std::vector<Row> rows = {
        {"an unknown class",
         [](const std::string& p) {
             return replacedOnce(p, "Class=\"ZemDemo::PickupTest\"", "Class=\"ZemDemo::NoSuchTest\"");
         },
         {pickupPath + ": the class 'ZemDemo::NoSuchTest' is unknown; it is kept unread and saved as it was"},
         keepsPickup},
        {"no class",
         [](const std::string& p) { return replacedOnce(p, " Class=\"ZemDemo::PickupTest\"", ""); },
         {pickupPath + ": the node is not part of the structure and names no class; it is kept unread"},
         keepsPickup},
        {"an empty class",
         [](const std::string& p) { return replacedOnce(p, "Class=\"ZemDemo::PickupTest\"", "Class=\"\""); },
         {pickupPath + ": the node is not part of the structure and names no class"},
         keepsPickup},
        {"no Id",
         [](const std::string& p) {
             return replacedOnce(p, "<Node Id=\"Pickup\" Class=", "<Node Ident=\"Pickup\" Class=");
         },
         {testsPath + ": a child element has no Id; it is kept unread and saved as it was"},
         [](const std::string& edited, const std::string& saved) {
             const std::string element = elementAt(edited, edited.find("<Node Ident=\"Pickup\""));
             EXPECT_EQ(1u, countOf(saved, element));
         }},
        {"a second root node",
         [](const std::string& p) {
             return replacedOnce(p, "</Project>",
                                 "<Node Id=\"Spare\" Class=\"ZemTree::HierarchicalContainer\"><Node Id=\"X\"/>"
                                 "</Node></Project>");
         },
         {"Spare: a second root node; it is kept unread and saved as it was after 'Substation'"},
         [](const std::string&, const std::string& saved) {
             EXPECT_NE(std::string::npos,
                       saved.find("</Node><Node Id=\"Spare\" Class=\"ZemTree::HierarchicalContainer\"><Node "
                                  "Id=\"X\"/></Node></Project>"));
         }},
        {"two siblings with one Id",
         [](const std::string& p) {
             const std::string element = pickupElement(p);
             return replacedOnce(p, element, element + element);
         },
         {pickupPath + ": a second node with this Id is read as '" + pickupPath + "_2'"},
         [](const std::string&, const std::string& saved) {
             EXPECT_EQ(1u, countOf(saved, "<Node Id=\"Pickup\" Class=\"ZemDemo::PickupTest\""));
             EXPECT_EQ(1u, countOf(saved, "<Node Id=\"Pickup_2\" Class=\"ZemDemo::PickupTest\""));
         }},
        {"two Value elements in one unit",
         [](const std::string& p) {
             return replacedOnce(p, "<Value Data=\"2.5\"/>", "<Value Data=\"2.5\"/><Value Data=\"9\"/>");
         },
         {pickupPath + "/Settings/Tolerance: the element holds 2 Value elements; the first is read"},
         [](const std::string&, const std::string& saved) {
             const std::string pickup = pickupElement(saved);
             EXPECT_NE(std::string::npos, pickup.find("<Value Data=\"2.5\"/>"));
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        SampleFolder sample;
        const std::string edited = row.edit(sample.project);
        writeFile(sample.folder.file("edited.xml"), edited);
        const RunnerOutcome outcome = runRunner(
            {"edited.xml", "--seed", "1", "--test", "Substation/Collection/Distance", "--output", "saved.xml"},
            sample.folder.path());
        EXPECT_EQ(0, outcome.exitCode) << outcome.err;
        for (const std::string& warning : row.warnings) {
            EXPECT_EQ(1u, linesWith(outcome.err, "zemtree-run: warning: " + warning)) << outcome.err;
        }
        EXPECT_EQ(row.warnings.size(), lineCount(outcome.err)) << outcome.err;
        const std::string saved = readFile(sample.folder.file("saved.xml"));
        row.check(edited, saved);
        // A second round keeps the same text: nothing is lost or doubled by saving what was kept.
        const RunnerOutcome again = runRunner(
            {"saved.xml", "--test", "Substation/Collection/Distance", "--output", "again.xml"}, sample.folder.path());
        EXPECT_EQ(0, again.exitCode) << again.err;
        row.check(edited, readFile(sample.folder.file("again.xml")));
    }
}

// Where the runner may save: never over anything but a regular file or a new name; through links; never over a
// file its owner may not write; under a file-size limit with the save's own message.
TEST(RunnerFilesTest, OutputTargetsAreReplacedOnlyWhenSafe)
{
    struct Row {
        const char* text;
        std::function<void(const TemporaryFolder&)> setUp;
        unsigned long fileSizeLimit;
        int exitCode;
        const char* error; // the one stderr line's end; empty for none
        std::function<void(const TemporaryFolder&)> check;
    };
    const std::vector<Row> rows = {
        {"a pipe", [](const TemporaryFolder& f) { ::mkfifo(f.file("out.xml").c_str(), 0644); }, 0, 2,
         "cannot be written: it is not a regular file",
         [](const TemporaryFolder& f) { EXPECT_TRUE(fs::is_fifo(f.file("out.xml"))); }},
        // What `--output /dev/null` names, made in the test's own folder; a pipe stands in for one without root.
        {"a device",
         [](const TemporaryFolder& f) {
             if (::mknod(f.file("out.xml").c_str(), S_IFCHR | 0666, makedev(1, 3)) != 0)
                 ::mkfifo(f.file("out.xml").c_str(), 0666);
         },
         0, 2, "cannot be written: it is not a regular file",
         [](const TemporaryFolder& f) { EXPECT_FALSE(fs::is_regular_file(f.file("out.xml"))); }},
        {"a folder", [](const TemporaryFolder& f) { fs::create_directory(f.file("out.xml")); }, 0, 2,
         "cannot be written: it is not a regular file",
         [](const TemporaryFolder& f) { EXPECT_TRUE(fs::is_directory(f.file("out.xml"))); }},
        {"a link",
         [](const TemporaryFolder& f) {
             fs::create_directory(f.file("keep"));
             writeFile(f.file("keep/project.xml"), "old");
             ::chmod(f.file("keep/project.xml").c_str(), 0604);
             fs::create_symlink("keep/project.xml", f.file("out.xml"));
         },
         0, 0, "",
         [](const TemporaryFolder& f) {
             EXPECT_TRUE(fs::is_symlink(f.file("out.xml")));
             EXPECT_NE(std::string::npos, readFile(f.file("keep/project.xml")).find("<Project>"));
             EXPECT_EQ(fs::perms(0604), fs::status(f.file("keep/project.xml")).permissions());
         }},
        {"a read-only file",
         [](const TemporaryFolder& f) {
             writeFile(f.file("out.xml"), "old");
             ::chmod(f.file("out.xml").c_str(), 0444);
         },
         0, 2, "cannot be written: the file is read-only",
         [](const TemporaryFolder& f) { EXPECT_EQ("old", readFile(f.file("out.xml"))); }},
        {"leftovers of a crashed save",
         [](const TemporaryFolder& f) {
             writeFile(f.file("out.xml"), "old");
             writeFile(f.file(".out.xml.00000000deadbeef.tmp"), "half");
         },
         0, 0, "",
         [](const TemporaryFolder& f) {
             EXPECT_FALSE(fs::exists(f.file(".out.xml.00000000deadbeef.tmp")));
             EXPECT_NE(std::string::npos, readFile(f.file("out.xml")).find("<Project>"));
         }},
        {"a file-size limit", [](const TemporaryFolder& f) { writeFile(f.file("out.xml"), "old"); }, 4096, 2,
         "cannot be written: File too large",
         [](const TemporaryFolder& f) { EXPECT_EQ("old", readFile(f.file("out.xml"))); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const TemporaryFolder folder;
        row.setUp(folder);
        const RunnerOutcome outcome =
            runRunner({"--new", "--seed", "1", "--output", "out.xml"}, folder.path(), "", {}, row.fileSizeLimit);
        EXPECT_EQ(row.exitCode, outcome.exitCode) << outcome.err;
        if (*row.error == '\0') {
            EXPECT_EQ("", outcome.err);
        }
        else {
            EXPECT_EQ(1u, lineCount(outcome.err)) << outcome.err;
            EXPECT_EQ(0u, outcome.err.rfind("zemtree-run: The project 'out.xml' cannot be written: ", 0))
                << outcome.err;
            EXPECT_NE(std::string::npos, outcome.err.find(std::string(row.error) + "\n")) << outcome.err;
        }
        row.check(folder);
        EXPECT_FALSE(hasTemporaryFile(folder.path()));
    }
}

// A signal that lands while a file is written waits until the file is in place; then the program ends by it.
TEST(RunnerFilesTest, SignalsDuringWritingWaitForTheFile)
{
    const struct {
        const char* text;
        const char* pausedBefore;
        int signal;
        int exitCode;
        const char* error;
        bool hasReport;
    } rows[] = {
        {"SIGTERM in the project's save", "the project", SIGTERM, 128 + SIGTERM,
         "zemtree-run: terminated while the project was being written; ending now that the writing is over\n", false},
        {"Ctrl-C in the report", "the report", SIGINT, 128 + SIGINT,
         "zemtree-run: interrupted while the report was being written; ending now that the writing is over\n", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const TemporaryFolder folder;
        RunnerProcess process({"--new", "--seed", "1", "--output", "p.xml", "--report", "report"}, folder.path(), "",
                              {"ZEMTREE_RUN_TEST_PAUSE_MS=1500"});
        ASSERT_TRUE(process.waitForOutput(std::string("pausing before writing ") + row.pausedBefore + "\n",
                                          std::chrono::seconds(60)))
            << process.getOut();
        process.sendSignal(row.signal);
        EXPECT_EQ(row.exitCode, process.finish(std::chrono::seconds(60)));
        EXPECT_EQ(row.error, process.getErr());

        // The project is whole and holds the run's verdicts.
        ZemDemo::registerDemoTypes();
        ZemTree::ProjectFile file;
        std::unique_ptr<ZemTree::Node> root;
        ASSERT_NO_THROW(root = file.load(folder.file("p.xml")));
        EXPECT_TRUE(file.getProblems().empty());
        EXPECT_NE(std::string::npos, readFile(folder.file("p.xml")).find("IsEvaluated=\"true\""));
        EXPECT_FALSE(hasTemporaryFile(folder.path()));

        EXPECT_EQ(row.hasReport, fs::exists(folder.file("report/report.xml")));
        if (!row.hasReport)
            continue;
        // Every picture is named by the report, which was written whole.
        const std::string report = readFile(folder.file("report/report.xml"));
        EXPECT_NE(std::string::npos, report.find("</Report>"));
        for (const fs::directory_entry& entry : fs::directory_iterator(folder.file("report/images"))) {
            SCOPED_TRACE(entry.path().string());
            EXPECT_NE(std::string::npos, report.find("\"" + entry.path().filename().string() + "\""));
        }
        EXPECT_FALSE(fs::exists(folder.file("report/report.html")));
    }
}

// Each fault of a file is told in one line that names the node by its full path, and --check finds what a save
// would not keep.
TEST(RunnerFilesTest, EachFaultIsToldInOneLineWithItsPath)
{
    struct Row {
        const char* text;
        std::function<void(SampleFolder&)> setUp; // writes edited.xml and whatever else the row needs
        std::vector<std::string> arguments;
        int exitCode;
        std::string line; // a part of the one line on stderr
        std::function<void(const TemporaryFolder&)> check = [](const TemporaryFolder&) {};
    };
    const auto edited = [](std::function<std::string(const std::string&)> edit) {
        return [edit](SampleFolder& s) { writeFile(s.folder.file("edited.xml"), edit(s.project)); };
    };
    const std::vector<std::string> check = {"--check", "edited.xml"};
    const std::vector<Row> rows = {
        {"broken XML is told at its first fault",
         [](SampleFolder& s) {
             writeFile(s.folder.file("edited.xml"), "<Project>\n<Node Id=\"a\" Id=\"b\"/>\n</Project>\n<More/>\n");
         },
         check, 2, "is not well-formed XML: line 2, column 20: Attribute Id redefined"},
        {"bytes that are not UTF-8",
         edited([](const std::string& p) { return replacedOnce(p, "Text=\"Substation\"", "Text=\"\xff\xfe\""); }),
         check, 2, "Input is not proper UTF-8, indicate encoding !; Bytes: 0xFF 0xFE"},
        {"a setting that is not a number",
         edited([](const std::string& p) { return replacedOnce(p, "<Value Data=\"2.5\"/>", "<Value Data=\"1,5\"/>"); }),
         check, 1, pickupPath + "/Settings/Tolerance: "},
        {"an unknown attribute", edited([](const std::string& p) {
             return replacedOnce(p, "<Node Id=\"Pickup\" Class=\"ZemDemo::PickupTest\"",
                                 "<Node Id=\"Pickup\" Class=\"ZemDemo::PickupTest\" Colour=\"red\"");
         }),
         check, 1, pickupPath + ": the attribute Colour is unknown here; a save drops it"},
        {"an unknown element", edited([](const std::string& p) {
             return replacedOnce(p, "<Description Text=\"Pickup current\">",
                                 "<Colour>red</Colour><Description Text=\"Pickup current\">");
         }),
         check, 1, pickupPath + ": the element Colour is unknown here; a save drops it"},
        {"text inside a node", edited([](const std::string& p) {
             return replacedOnce(p, "<Description Text=\"Pickup current\">",
                                 "stray words<Description Text=\"Pickup current\">");
         }),
         check, 1, pickupPath + ": the text 'stray words' stands outside any element and is not read"},
        {"a key with a line break in it", edited([](const std::string& p) {
             return replacedOnce(p, "<Node Id=\"Pickup\" Class=\"ZemDemo::PickupTest\"",
                                 "<Node Id=\"Pick&#10;up\" Class=\"ZemDemo::NoSuchTest\"");
         }),
         check, 1, testsPath + "/Pick\\nup: the class 'ZemDemo::NoSuchTest' is unknown"},
        {"a broken template file",
         [](SampleFolder& s) {
             writeFile(s.folder.file("edited.xml"),
                       replacedOnce(s.project, "Class=\"ZemDemo::PickupTest\"",
                                    "Class=\"ZemDemo::PickupTest\" TemplateXml=\"PickupTest\""));
             const std::string pickup = readFile(s.folder.file("PickupTest.xml"));
             writeFile(s.folder.file("PickupTest.xml"), pickup.substr(0, pickup.size() / 2));
         },
         check, 1, pickupPath + ": the template 'PickupTest' cannot be applied: The template file '"},
        {"a template name that leaves the template folder", edited([](const std::string& p) {
             return replacedOnce(p, "Class=\"ZemDemo::PickupTest\"",
                                 "Class=\"ZemDemo::PickupTest\" TemplateXml=\"../../etc/passwd\"");
         }),
         check, 1,
         pickupPath
             + ": the template name '../../etc/passwd' names a path outside the template folder; only "
               "'passwd' is looked for there, and the project saves the name 'passwd'"},
        {"a stylesheet that is not one",
         [](SampleFolder& s) { writeFile(s.folder.file("bad.xsl"), "<html/>"); },
         {"--new", "--seed", "1", "--output", "p.xml", "--report", "report", "--xsl", "bad.xsl"},
         2,
         "zemtree-run: xsltproc failed to make report/report.html (exit code"},
        {"an image folder that cannot be made",
         [](SampleFolder& s) {
             fs::create_directory(s.folder.file("report"));
             writeFile(s.folder.file("report/images"), "in the way");
         },
         {"--new", "--seed", "1", "--output", "p.xml", "--report", "report"},
         2,
         "Cannot create the report image folder report/images: "},
        {"a report that cannot be written",
         [](SampleFolder& s) { fs::create_directories(s.folder.file("report/report.xml")); },
         {"--new", "--seed", "1", "--output", "p.xml", "--report", "report"},
         2,
         "zemtree-run: The report 'report/report.xml' cannot be written: it is not a regular file",
         [](const TemporaryFolder& f) {
             // The pictures it had drawn went with it.
             std::size_t pictures = 0;
             for (const fs::directory_entry& entry : fs::directory_iterator(f.file("report/images")))
                 pictures += entry.path().extension() == ".png" ? 1 : 0;
             EXPECT_EQ(0u, pictures);
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        SampleFolder sample;
        row.setUp(sample);
        const RunnerOutcome outcome = runRunner(row.arguments, sample.folder.path());
        EXPECT_EQ(row.exitCode, outcome.exitCode) << outcome.err;
        EXPECT_EQ(1u, lineCount(outcome.err)) << outcome.err;
        EXPECT_NE(std::string::npos, outcome.err.find(row.line)) << outcome.err;
        row.check(sample.folder);
    }
}
