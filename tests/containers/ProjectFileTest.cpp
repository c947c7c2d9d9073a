#include "containers/ProjectFile.h"

#include "ContainerTestNodes.h"
#include "containers/DescriptorsContainer.h"
#include "core/tree/Measures.h"
#include "core/tree/NodeTreeTraversal.h"
#include "core/tree/RangeStructure.h"
#include "core/tree/StringUnit.h"
#include "core/tree/Tolerance.h"
#include "core/tree/ToleranceItem.h"
#include "core/tree/ToleranceReduced.h"
#include "results/NumericSettingAssessment.h"
#include "results/ResultMultiGraphUnit.h"
#include "results/ResultMultiNumericUnit.h"
#include "results/ResultMultiStringUnit.h"
#include "results/StringSettingAssessment.h"
#include "results/graph/GraphDataRecord.h"
#include "results/graph/GraphDataTable.h"
#include "results/graph/GraphTimeManager.h"
#include "results/graph/ResultMultiGraph.h"

#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace ZemTree;
using namespace ZemTreeTest;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::ThrowsMessage;

namespace {

// Root "Substation" > two protections > tests, with values, choices and a finished run.
std::unique_ptr<SampleRoot> buildProject()
{
    registerSampleTypes();
    auto root = std::make_unique<SampleRoot>();
    root->initContainer();
    root->getDescriptors()->add(std::make_unique<StringUnit>("Serial", "Serial number", "", "SN-0042"));
    for (int p = 0; p < 2; ++p) {
        auto* protection = addFilled<SampleProtection>(root->getContainers(), "Protection" + std::to_string(p));
        protection->setDescription(LocalString::create("Protection " + std::to_string(p), "Защита"));
        for (int t = 0; t < 3; ++t) {
            auto* test = addFilled<SampleTest>(protection->getTests(), "Test" + std::to_string(t));
            test->setDescription("Stage " + std::to_string(t));
            test->current->setData(1.5 * (p + 1) + t);
            test->setIsEvaluated(t != 1);
        }
    }
    auto* ran =
        dynamic_cast<SampleTest*>(dynamic_cast<SampleProtection*>(root->getContainers()->at(0))->getTests()->at(0));
    ran->beginExecute();
    ran->_finishExecute();
    return root;
}

std::string fileText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

void writeFile(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
}

std::size_t filesIn(const std::filesystem::path& folder)
{
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        (void)entry;
        ++count;
    }
    return count;
}

// Limits the size of files this process writes, as a full disk would; SIGXFSZ is ignored meanwhile so that the
// write fails with EFBIG instead of ending the process.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &_old);
        _oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = _old;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &_old);
        std::signal(SIGXFSZ, _oldHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit _old{};
    void (*_oldHandler)(int) = nullptr;
};

// Runs `work` in a forked child and returns its exit code, or 128 + the signal that ended it.
int inChild(const std::function<int()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

TEST(ProjectFile, WholeTreeRoundTrip)
{
    TemporaryFolder folder;
    const std::unique_ptr<SampleRoot> original = buildProject();
    ProjectFile file;
    file.save(*original, folder.file("project.xml"));

    const std::unique_ptr<Node> loaded = file.load(folder.file("project.xml"));
    ASSERT_NE(dynamic_cast<SampleRoot*>(loaded.get()), nullptr);
    EXPECT_TRUE(file.getProblems().empty()) << file.getProblems().front();
    EXPECT_EQ(xmlOf(*loaded, SerializationMode::User), xmlOf(*original, SerializationMode::User));

    // The loaded tree is alive, not only equal on paper: its cascade and its test classes work.
    auto* root = static_cast<SampleRoot*>(loaded.get());
    EXPECT_EQ(root->getIsEvaluated(), Zem::Nullable<bool>());
    auto* protection = dynamic_cast<SampleProtection*>(root->getContainers()->at(1));
    ASSERT_NE(protection, nullptr);
    auto* test = dynamic_cast<SampleTest*>(protection->getTests()->at(2));
    ASSERT_NE(test, nullptr);
    EXPECT_DOUBLE_EQ(test->current->getNativeData(), 5.0);
    EXPECT_EQ(test->getDescription(), "Stage 2");
    EXPECT_TRUE(protection->getSettings()->isLocked());

    // Saved again it gives the same file.
    file.save(*loaded, folder.file("again.xml"));
    EXPECT_EQ(fileText(folder.file("again.xml")), fileText(folder.file("project.xml")));
}

TEST(ProjectFile, FailedSaveLeavesTheOldFile)
{
    TemporaryFolder folder;
    const std::unique_ptr<SampleRoot> root = buildProject();
    ProjectFile file;
    const std::string path = folder.file("project.xml");
    writeFile(path, "<Project/>");
    const std::string old = fileText(path);

    {
        const FileSizeLimit fullDisk(64);
        try {
            file.save(*root, path);
            FAIL() << "a save beyond the disk's room succeeded";
        }
        catch (const std::runtime_error& error) {
            EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
        }
    }
    EXPECT_EQ(fileText(path), old);
    EXPECT_EQ(filesIn(folder.path()), 1u) << "a temporary file was left behind";

    // A folder that refuses new files. Permissions do not bind root, so root tries it as "nobody" in a child.
    std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec
                                                    | std::filesystem::perms::others_read
                                                    | std::filesystem::perms::others_exec);
    const int status = inChild([&] {
        if (geteuid() == 0 && setuid(65534) != 0)
            return 3;
        try {
            file.save(*root, path);
            return 1;
        }
        catch (const std::runtime_error& error) {
            return std::string(error.what()).find("Permission denied") != std::string::npos ? 0 : 2;
        }
    });
    std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(status, 0) << "1: saved into a read-only folder, 2: unclear error, 3: cannot drop root";
    EXPECT_EQ(fileText(path), old);

    file.save(*root, path);
    EXPECT_NE(fileText(path), old);
    EXPECT_EQ(filesIn(folder.path()), 1u);
}

TEST(ProjectFile, SaveKilledMidWriteLeavesAWholeFile)
{
    TemporaryFolder folder;
    const std::unique_ptr<SampleRoot> root = buildProject();
    ProjectFile file;
    const std::string path = folder.file("project.xml");
    file.save(*root, path);
    const std::string old = fileText(path);
    // The child saves a changed tree over and over until it is killed at some point of a write.
    root->setDescription("Changed");
    file.save(*root, folder.file("changed.xml"));
    const std::string changed = fileText(folder.file("changed.xml"));
    ASSERT_NE(changed, old);
    for (int round = 0; round < 8; ++round) {
        SCOPED_TRACE(round);
        const pid_t child = fork();
        if (child == 0) {
            for (;;)
                file.save(*root, path);
        }
        usleep(static_cast<useconds_t>(2000 + 3000 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string now = fileText(path);
        EXPECT_TRUE(now == old || now == changed) << now.substr(0, 200);
        EXPECT_NO_THROW(file.load(path));
    }
}

TEST(ProjectFile, BadFilesLeaveTheOpenTreeUnchanged)
{
    TemporaryFolder folder;
    const std::unique_ptr<SampleRoot> root = buildProject();
    const std::string before = xmlOf(*root, SerializationMode::User);
    std::filesystem::create_directories(folder.path() / "folder.xml");

    struct Row {
        const char* text;
        std::string contents;
        const char* reason;
    };
    const Row rows[] = {
        {"empty file", "", "not well-formed"},
        {"truncated", "<Project>\n<Node Id='Root' Class='ZemTreeTest::SampleRoot' IsHidden='true'>\n<Node Id='Set",
         "line 3, column"},
        {"not XML", "Serial number: SN-0042", "not well-formed"},
        {"two roots", "<Project/><Project/>", "line"},
        {"no node", "<Project><Other/></Project>", "holds no project"},
        {"another root class", "<Project><Node Id='Root' Class='ZemTree::HierarchicalContainer'/></Project>",
         "ZemTree::HierarchicalContainer"},
    };
    ProjectFile file;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string path = folder.file(std::string(row.text) + ".xml");
        writeFile(path, row.contents);
        EXPECT_THAT([&] { file.read(*root, path); },
                    ThrowsMessage<std::runtime_error>(AllOf(HasSubstr(path), HasSubstr(row.reason))));
        EXPECT_EQ(xmlOf(*root, SerializationMode::User), before);
    }

    EXPECT_THROW(file.read(*root, folder.file("missing.xml")), std::runtime_error);
    EXPECT_THROW(file.read(*root, folder.file("folder.xml")), std::runtime_error);
    writeFile(folder.file("unknown.xml"), "<Project><Node Id='Root' Class='Nowhere::Root'/></Project>");
    EXPECT_THROW(file.load(folder.file("unknown.xml")), std::runtime_error);
    EXPECT_EQ(xmlOf(*root, SerializationMode::User), before);
}

TEST(ProjectFile, HostileFilesAreRefusedAndChangeNothing)
{
    TemporaryFolder folder;
    writeFile(folder.file("secret.txt"), "TOP-SECRET");
    const std::string node = "<Project><Node Id='Root' Class='ZemTreeTest::SampleRoot'>"
                             "<Description Text='&x;'/></Node></Project>";

    std::ostringstream laughs;
    laughs << "<?xml version='1.0'?>\n<!DOCTYPE Project [<!ENTITY l0 'ha'>";
    for (int i = 1; i < 12; ++i) {
        laughs << "<!ENTITY l" << i << " '";
        for (int k = 0; k < 10; ++k)
            laughs << "&l" << i - 1 << ";";
        laughs << "'>";
    }
    laughs << "<!ENTITY x '&l11;'>]>" << node;

    std::string deep = "<Project><Node Id='Root' Class='ZemTreeTest::SampleRoot'>";
    for (int i = 0; i < 100000; ++i)
        deep += "<a>";

    struct Row {
        const char* text;
        std::string contents;
        const char* reason;
    };
    const Row rows[] = {
        {"external entity", "<!DOCTYPE Project [<!ENTITY x SYSTEM 'file://" + folder.file("secret.txt") + "'>]>" + node,
         "document type declaration"},
        {"network entity",
         "<?xml version='1.0'?><!-- c --><!DOCTYPE Project [<!ENTITY x SYSTEM "
         "'http://192.0.2.1/x'>]>"
             + node,
         "document type declaration"},
        {"external DTD", "<!DOCTYPE Project SYSTEM 'http://192.0.2.1/p.dtd'>" + node, "document type declaration"},
        {"billion laughs", laughs.str(), "document type declaration"},
        {"deep nesting", deep, "nest deeper than 256"},
        {"undeclared entity", node, "line 1"},
    };
    const std::unique_ptr<SampleRoot> root = buildProject();
    const std::string before = xmlOf(*root, SerializationMode::User);
    ProjectFile file;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string path = folder.file("hostile.xml");
        writeFile(path, row.contents);
        for (int readInto = 0; readInto < 2; ++readInto) {
            try {
                if (readInto != 0)
                    file.read(*root, path);
                else
                    file.load(path);
                ADD_FAILURE() << "a hostile file was read";
            }
            catch (const std::runtime_error& error) {
                EXPECT_NE(std::string(error.what()).find(row.reason), std::string::npos) << error.what();
            }
        }
        EXPECT_EQ(xmlOf(*root, SerializationMode::User), before);
        EXPECT_EQ(fileText(path), row.contents);
    }

    // A harmless bare declaration is no reason to refuse a project.
    file.save(*root, folder.file("plain.xml"));
    writeFile(folder.file("doctype.xml"),
              "<!DOCTYPE Project>"
                  + fileText(folder.file("plain.xml")).substr(fileText(folder.file("plain.xml")).find("<Project")));
    EXPECT_NO_THROW(file.read(*root, folder.file("doctype.xml")));
}

TEST(ProjectFile, OversizedFileIsRefusedUnread)
{
    TemporaryFolder folder;
    const std::string path = folder.file("huge.xml");
    // A sparse file: 200 MB long without taking the room on disk.
    writeFile(path, "<Project>");
    std::filesystem::resize_file(path, 200ull * 1024 * 1024);
    rusage before{};
    getrusage(RUSAGE_SELF, &before);

    ProjectFile file;
    try {
        file.load(path);
        FAIL() << "a 200 MB file was read";
    }
    catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("larger than"), std::string::npos) << error.what();
    }
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 50 * 1024) << "kB more resident memory for a refused file";
}

namespace {

// The text of the first element of `text` that starts with `opening`, up to its end tag (libxml2 escapes '>' in
// attribute values, so tags are told by their angle brackets).
std::string elementText(const std::string& text, const std::string& opening)
{
    const std::size_t start = text.find(opening);
    if (start == std::string::npos)
        return std::string();
    int depth = 0;
    for (std::size_t at = start; (at = text.find('<', at)) != std::string::npos;) {
        const std::size_t end = text.find('>', at);
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

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    if (at == std::string::npos)
        throw std::runtime_error("no " + from + " in the file");
    return text.replace(at, from.size(), to);
}

} // namespace

// What the tree cannot read is kept as it was, in its place, by load and by read, and a second save gives the
// same file; the problems name each such node by its full path.
TEST(ProjectFile, UnreadableElementsSurviveSaves)
{
    TemporaryFolder folder;
    ProjectFile file;
    file.save(*buildProject(), folder.file("project.xml"));
    const std::string project = fileText(folder.file("project.xml"));
    const std::string test1 = elementText(project, "<Node Id=\"Test1\"");
    ASSERT_FALSE(test1.empty());
    const std::size_t classAt = test1.find("Class=\"");
    const std::string testClass = test1.substr(classAt, test1.find('"', classAt + 7) - classAt + 1);
    const std::string tests = "Root/Collection/Protection0/Tests";

    const std::string unknownTest1 = replaced(test1, testClass, "Class=\"No::Such\"");
    const std::string keylessTest1 = replaced(test1, "<Node Id=\"Test1\"", "<Node Key=\"Test1\"");
    const struct {
        const char* text;
        std::string edited;
        std::string kept; // must stand in the saved file once, before Test2
        std::string problem;
    } rows[] = {
        {"an unknown class", replaced(project, test1, unknownTest1), unknownTest1,
         tests + "/Test1: the class 'No::Such' is unknown; it is kept unread and saved as it was"},
        {"no Id", replaced(project, test1, keylessTest1), keylessTest1,
         tests + ": a child element has no Id; it is kept unread and saved as it was"},
        {"a node a locked container refuses",
         replaced(project, "<Node Id=\"Settings\"", "<Node Id=\"Intruder\" " + testClass + "/><Node Id=\"Settings\""),
         "<Node Id=\"Intruder\" " + testClass + "/>", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        writeFile(folder.file("edited.xml"), row.edited);
        for (const bool intoExisting : {false, true}) {
            SCOPED_TRACE(intoExisting ? "read into a tree" : "loaded");
            ProjectFile reader;
            std::unique_ptr<Node> root;
            if (intoExisting) {
                root = std::make_unique<SampleRoot>();
                reader.read(*root, folder.file("edited.xml"));
            }
            else {
                root = reader.load(folder.file("edited.xml"));
            }
            ASSERT_EQ(1u, reader.getProblems().size());
            if (!row.problem.empty()) {
                EXPECT_EQ(row.problem, reader.getProblems()[0]);
            }
            EXPECT_THAT(reader.getProblems()[0], HasSubstr("; it is kept unread and saved as it was"));

            reader.save(*root, folder.file("saved.xml"));
            const std::string saved = fileText(folder.file("saved.xml"));
            const std::size_t at = saved.find(row.kept);
            ASSERT_NE(std::string::npos, at) << saved;
            EXPECT_EQ(std::string::npos, saved.find(row.kept, at + 1));
            if (row.kept.find("Test1") != std::string::npos) {
                EXPECT_LT(at, saved.find("<Node Id=\"Test2\""));
            }

            // The kept element is a copy of its own: a save after the parsed file is gone writes the same.
            ProjectFile again;
            const std::unique_ptr<Node> reloaded = again.load(folder.file("saved.xml"));
            again.save(*reloaded, folder.file("again.xml"));
            EXPECT_EQ(saved, fileText(folder.file("again.xml")));
        }
    }
}

TEST(ProjectFile, SiblingsWithOneIdAreKeptApart)
{
    TemporaryFolder folder;
    ProjectFile file;
    file.save(*buildProject(), folder.file("project.xml"));
    const std::string project = fileText(folder.file("project.xml"));
    const std::string test0 = elementText(project, "<Node Id=\"Test0\"");
    // Test0 three times, then Test0_2 of the file's own after them.
    writeFile(folder.file("edited.xml"),
              replaced(project, test0,
                       test0 + test0 + test0 + replaced(test0, "<Node Id=\"Test0\"", "<Node Id=\"Test0_2\"")));

    ProjectFile reader;
    const std::unique_ptr<Node> root = reader.load(folder.file("edited.xml"));
    const std::string tests = "Root/Collection/Protection0/Tests";
    EXPECT_EQ((std::vector<std::string>{
                  tests + "/Test0: a second node with this Id is read as '" + tests + "/Test0_2'",
                  tests + "/Test0: a second node with this Id is read as '" + tests + "/Test0_3'",
                  tests + "/Test0_2: a second node with this Id is read as '" + tests + "/Test0_2_2'",
              }),
              reader.getProblems());
    reader.save(*root, folder.file("saved.xml"));
    const std::string saved = elementText(fileText(folder.file("saved.xml")), "<Node Id=\"Protection0\"");
    for (const char* id : {"Test0", "Test0_2", "Test0_3", "Test0_2_2", "Test1", "Test2"}) {
        SCOPED_TRACE(id);
        const std::string opening = std::string("<Node Id=\"") + id + "\"";
        const std::size_t at = saved.find(opening);
        EXPECT_NE(std::string::npos, at);
        EXPECT_EQ(std::string::npos, saved.find(opening, at + 1));
    }
}

TEST(ProjectFile, SecondRootNodesAreKeptForTheirOwnTree)
{
    TemporaryFolder folder;
    ProjectFile file;
    file.save(*buildProject(), folder.file("project.xml"));
    const std::string spare = "<Node Id=\"Spare\" Class=\"X\"><Item>1</Item></Node><Node Class=\"Y\"/>";
    writeFile(folder.file("edited.xml"),
              replaced(fileText(folder.file("project.xml")), "</Project>", spare + "</Project>"));

    ProjectFile reader;
    const std::unique_ptr<Node> root = reader.load(folder.file("edited.xml"));
    EXPECT_EQ((std::vector<std::string>{"Spare: a second root node; it is kept unread and saved as it was after 'Root'",
                                        "?: a second root node; it is kept unread and saved as it was after 'Root'"}),
              reader.getProblems());
    reader.save(*root, folder.file("saved.xml"));
    EXPECT_THAT(fileText(folder.file("saved.xml")), HasSubstr("</Node>" + spare + "</Project>"));
    // Another tree saved through the same file does not take them.
    reader.save(*buildProject(), folder.file("other.xml"));
    EXPECT_EQ(std::string::npos, fileText(folder.file("other.xml")).find("Spare"));
}

// A check tells what a save would drop; a file the program wrote has nothing of the kind.
TEST(ProjectFile, CheckFindsWhatASaveWouldDrop)
{
    TemporaryFolder folder;
    ProjectFile file;
    file.save(*buildProject(), folder.file("project.xml"));
    const std::string project = fileText(folder.file("project.xml"));
    const std::string test = "Root/Collection/Protection0/Tests/Test2";
    const auto withinTest2 = [&project](const std::string& inner) {
        std::string edited = project;
        const std::size_t opening = edited.find('>', edited.find("<Node Id=\"Test2\""));
        return edited.insert(opening + 1, inner);
    };
    const struct {
        const char* text;
        std::string edited;
        std::vector<std::string> problems;
    } rows[] = {
        {"the program's own file", project, {}},
        {"an unknown attribute",
         replaced(project, "<Node Id=\"Protection1\"", "<Node Colour=\"red\" Id=\"Protection1\""),
         {"Root/Collection/Protection1: the attribute Colour is unknown here; a save drops it"}},
        {"an unknown element deep down, twice",
         withinTest2("<Note/><Note/>"),
         {test + ": the element Note is unknown here; a save drops it"}},
        {"text inside a node",
         withinTest2("loose words"),
         {test + ": the text 'loose words' stands outside any element and is not read"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        writeFile(folder.file("edited.xml"), row.edited);
        ProjectFile reader;
        const std::unique_ptr<Node> root = reader.load(folder.file("edited.xml"));
        // Text inside a node is told by the load itself; the rest by the check.
        reader.noteUnkeptContent(*root, folder.file("edited.xml"));
        EXPECT_EQ(row.problems, reader.getProblems());
    }
}

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
        contact = getResults()->add(std::make_unique<ResultMultiStringUnit>("Contact", LocalString("Trip contact"),
                                                                            LocalString::Empty(), nullptr));
        tripTime = getResults()->add(std::make_unique<ResultMultiGraphUnit>("TripTime", LocalString("Trip time"),
                                                                            LocalString::Empty(), nullptr));
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
        points.push_back(
            {multiple, standardInverseTime(multiple, 0.1) * (multiple == 5.0 && variant == 1 ? 1.2 : 1.01)});
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
