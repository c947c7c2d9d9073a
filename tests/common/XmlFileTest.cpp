#include "core/common/XmlFile.h"

#include "TemporaryFolder.h"
#include "core/common/XmlInclude.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <signal.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;
using Zem::XmlFile;
using ZemTreeTest::TemporaryFolder;

namespace {

std::string readFile(const fs::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

// The message of the runtime_error that `action` throws; empty when it throws none.
std::string refusalOf(const std::function<void()>& action)
{
    try {
        action();
    }
    catch (const std::runtime_error& error) {
        return error.what();
    }
    return std::string();
}

std::vector<std::string> namesIn(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

// Where a save may and may not go. A refused target keeps what it was; an accepted one holds the new text.
TEST(XmlFileTest, WritesOnlyOverRegularFilesAndThroughLinks)
{
    struct Row {
        const char* text;
        std::function<void(const TemporaryFolder&)> setUp;
        const char* refusal; // empty when the save goes through
        std::function<void(const TemporaryFolder&)> check;
    };
    const std::vector<Row> rows = {
        {"a new name", [](const TemporaryFolder&) {}, "",
         [](const TemporaryFolder& folder) { EXPECT_EQ("new", readFile(folder.file("p.xml"))); }},
        {"a regular file keeps its permissions",
         [](const TemporaryFolder& folder) {
             folder.write("p.xml", "old");
             ::chmod(folder.file("p.xml").c_str(), 0640);
         },
         "",
         [](const TemporaryFolder& folder) {
             EXPECT_EQ("new", readFile(folder.file("p.xml")));
             EXPECT_EQ(fs::perms(0640), fs::status(folder.file("p.xml")).permissions());
         }},
        {"a link stays a link and its target is replaced",
         [](const TemporaryFolder& folder) {
             fs::create_directory(folder.file("real"));
             folder.write("real/target.xml", "old");
             ::chmod(folder.file("real/target.xml").c_str(), 0600);
             fs::create_symlink("real/target.xml", folder.file("p.xml"));
         },
         "",
         [](const TemporaryFolder& folder) {
             EXPECT_TRUE(fs::is_symlink(folder.file("p.xml")));
             EXPECT_EQ("new", readFile(folder.file("real/target.xml")));
             EXPECT_EQ(fs::perms(0600), fs::status(folder.file("real/target.xml")).permissions());
             // The temporary file went beside the target, not beside the link.
             EXPECT_EQ((std::vector<std::string>{"target.xml"}), namesIn(folder.file("real")));
         }},
        {"a chain of links ends at its last target",
         [](const TemporaryFolder& folder) {
             folder.write("target.xml", "old");
             fs::create_symlink(folder.file("target.xml"), folder.file("middle.xml"));
             fs::create_symlink("middle.xml", folder.file("p.xml"));
         },
         "",
         [](const TemporaryFolder& folder) {
             EXPECT_TRUE(fs::is_symlink(folder.file("p.xml")));
             EXPECT_TRUE(fs::is_symlink(folder.file("middle.xml")));
             EXPECT_EQ("new", readFile(folder.file("target.xml")));
         }},
        {"a dangling link makes its target",
         [](const TemporaryFolder& folder) { fs::create_symlink("made.xml", folder.file("p.xml")); }, "",
         [](const TemporaryFolder& folder) {
             EXPECT_TRUE(fs::is_symlink(folder.file("p.xml")));
             EXPECT_EQ("new", readFile(folder.file("made.xml")));
         }},
        {"a pipe", [](const TemporaryFolder& folder) { ::mkfifo(folder.file("p.xml").c_str(), 0644); },
         "it is not a regular file",
         [](const TemporaryFolder& folder) { EXPECT_TRUE(fs::is_fifo(folder.file("p.xml"))); }},
        {"a link to a pipe",
         [](const TemporaryFolder& folder) {
             ::mkfifo(folder.file("fifo").c_str(), 0644);
             fs::create_symlink("fifo", folder.file("p.xml"));
         },
         "it is not a regular file",
         [](const TemporaryFolder& folder) { EXPECT_TRUE(fs::is_fifo(folder.file("fifo"))); }},
        // What `--output /dev/null` names, in a folder of the test's own.
        {"a device",
         [](const TemporaryFolder& folder) {
             if (::mknod(folder.file("p.xml").c_str(), S_IFCHR | 0666, makedev(1, 3)) != 0)
                 ::mkfifo(folder.file("p.xml").c_str(), 0666); // not root: a pipe stands in
         },
         "it is not a regular file",
         [](const TemporaryFolder& folder) { EXPECT_FALSE(fs::is_regular_file(folder.file("p.xml"))); }},
        {"a folder", [](const TemporaryFolder& folder) { fs::create_directory(folder.file("p.xml")); },
         "it is not a regular file",
         [](const TemporaryFolder& folder) { EXPECT_TRUE(fs::is_directory(folder.file("p.xml"))); }},
        {"a loop of links",
         [](const TemporaryFolder& folder) {
             fs::create_symlink("q.xml", folder.file("p.xml"));
             fs::create_symlink("p.xml", folder.file("q.xml"));
         },
         "Too many levels of symbolic links",
         [](const TemporaryFolder& folder) { EXPECT_TRUE(fs::is_symlink(folder.file("p.xml"))); }},
        // Refused for root too, who could write it anyway.
        {"a file its owner may not write",
         [](const TemporaryFolder& folder) {
             folder.write("p.xml", "old");
             ::chmod(folder.file("p.xml").c_str(), 0444);
         },
         "the file is read-only",
         [](const TemporaryFolder& folder) { EXPECT_EQ("old", readFile(folder.file("p.xml"))); }},
        {"a link to a read-only file",
         [](const TemporaryFolder& folder) {
             folder.write("target.xml", "old");
             ::chmod(folder.file("target.xml").c_str(), 0444);
             fs::create_symlink("target.xml", folder.file("p.xml"));
         },
         "the file is read-only",
         [](const TemporaryFolder& folder) { EXPECT_EQ("old", readFile(folder.file("target.xml"))); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const TemporaryFolder folder;
        row.setUp(folder);
        const std::string refusal =
            refusalOf([&] { XmlFile::writeAtomically(folder.file("p.xml"), "new", "project"); });
        if (*row.refusal == '\0') {
            EXPECT_EQ("", refusal);
        }
        else {
            EXPECT_NE(std::string::npos, refusal.find(row.refusal)) << refusal;
            EXPECT_EQ(0u, refusal.rfind("The project '" + folder.file("p.xml") + "' cannot be written: ", 0))
                << refusal;
        }
        row.check(folder);
        // No temporary file is left anywhere in the folder.
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder.path()))
            EXPECT_EQ(std::string::npos, entry.path().filename().string().find(".tmp")) << entry.path();
    }
}

TEST(XmlFileTest, KeepsTheOwnerOfTheFileItReplaces)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a file to another owner";
    const TemporaryFolder folder;
    folder.write("p.xml", "old");
    ASSERT_EQ(0, ::chown(folder.file("p.xml").c_str(), 4321, 8765));
    XmlFile::writeAtomically(folder.file("p.xml"), "new", "project");
    struct stat status {};
    ASSERT_EQ(0, ::stat(folder.file("p.xml").c_str(), &status));
    EXPECT_EQ(4321u, status.st_uid);
    EXPECT_EQ(8765u, status.st_gid);
    EXPECT_EQ("new", readFile(folder.file("p.xml")));
}

TEST(XmlFileTest, RecognisesOnlyItsOwnTemporaryNames)
{
    const struct {
        const char* name;
        bool isOwn;
    } rows[] = {
        {".p.xml.0123456789abcdef.tmp", true},  {".p.xml.0123456789ABCDEF.tmp", false},
        {".p.xml.0123456789abcde.tmp", false},  {".p.xml.0123456789abcdefa.tmp", false},
        {".p.xml.0123456789abcdeg.tmp", false}, {"p.xml.0123456789abcdef.tmp", false},
        {".q.xml.0123456789abcdef.tmp", false}, {".p.xml.0123456789abcdef.tmp~", false},
        {".p.xml-0123456789abcdef.tmp", false}, {".p.xml", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.isOwn, XmlFile::isTemporaryName(row.name, "p.xml"));
    }
}

TEST(XmlFileTest, SaveRemovesTheTemporaryFilesOfEarlierCrashedSaves)
{
    const TemporaryFolder folder;
    folder.write("p.xml", "old");
    folder.write(".p.xml.0123456789abcdef.tmp", "half a save");
    folder.write(".p.xml.fedcba9876543210.tmp", "another");
    folder.write(".q.xml.0123456789abcdef.tmp", "a save of another file");
    folder.write(".p.xml.mine.tmp", "not of the writer's pattern");
    fs::create_directory(folder.file(".p.xml.1111111111111111.tmp"));

    XmlFile::writeAtomically(folder.file("p.xml"), "new", "project");
    EXPECT_EQ((std::vector<std::string>{".p.xml.1111111111111111.tmp", ".p.xml.mine.tmp", ".q.xml.0123456789abcdef.tmp",
                                        "p.xml"}),
              namesIn(folder.path()));
    EXPECT_EQ("new", readFile(folder.file("p.xml")));
}

// Under a file-size limit, with SIGXFSZ ignored as the runner does, the write fails with its own message and the
// old file stays whole.
TEST(XmlFileTest, FileSizeLimitGivesTheSaveErrorAndKeepsTheOldFile)
{
    const TemporaryFolder folder;
    folder.write("p.xml", "old");
    const std::string path = folder.file("p.xml");
    const auto saveUnderLimit = [&path] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{4096, 4096};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        const std::string refusal =
            refusalOf([&] { XmlFile::writeAtomically(path, std::string(100000, 'x'), "project"); });
        const bool isTold = refusal.find("cannot be written: File too large") != std::string::npos;
        const bool isKept = readFile(path) == "old" && namesIn(fs::path(path).parent_path()).size() == 1;
        std::_Exit(isTold && isKept ? 0 : 1);
    };
    EXPECT_EXIT(saveUnderLimit(), ::testing::ExitedWithCode(0), "");
}

// Broken XML is told at its first fault, in one line.
TEST(XmlFileTest, BrokenXmlIsToldAtItsFirstFaultInOneLine)
{
    const struct {
        const char* text;
        std::string contents;
        const char* expected;
    } rows[] = {
        {"a fault followed by more", "<Project>\n<Node Id=\"a\" Id=\"b\"/>\n</Project>\n<Extra/>\n",
         "line 2, column 20: Attribute Id redefined"},
        {"a bad byte early in a long file",
         "<Project>\n<Node Id=\"a\">\x01</Node>\n" + std::string(500, ' ') + "</Project><more/>",
         "line 2, column 14: PCDATA invalid Char value 1"},
        {"bytes that are not UTF-8", "<Project><Node Id=\"\xff\xfe\"/></Project>",
         "Input is not proper UTF-8, indicate encoding !; Bytes: 0xFF 0xFE"},
        {"an undeclared prefix the parser gets past", "<Project><p:Node Id=\"a\"/></Project>",
         "Namespace prefix p on Node is not defined"},
        {"an unclosed element", "<Project>\n<Node Id=\"a\">\n", "line 3"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const TemporaryFolder folder;
        folder.write("p.xml", row.contents);
        xmlpp::DomParser parser;
        const std::string refusal = refusalOf([&] { XmlFile::parse(folder.file("p.xml"), parser, "project"); });
        EXPECT_NE(std::string::npos, refusal.find(row.expected)) << refusal;
        EXPECT_NE(std::string::npos, refusal.find("is not well-formed XML")) << refusal;
        EXPECT_EQ(std::string::npos, refusal.find('\n')) << refusal;
        EXPECT_EQ(std::string::npos, refusal.find("Extra content")) << refusal;
    }
}
