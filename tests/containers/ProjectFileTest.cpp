#include "containers/ProjectFile.h"

#include "ContainerTestNodes.h"
#include "containers/DescriptorsContainer.h"
#include "core/tree/NodeTemplateActivator.h"
#include "core/tree/NodeTemplateActivatorCollection.h"
#include "core/tree/StringUnit.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

using namespace ZemTree;
using namespace ZemTreeTest;

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

    root->setIsEvaluated(true);
    EXPECT_EQ(root->getIsEvaluated(), Zem::Nullable<bool>(true));
}

TEST(ProjectFile, TemplateFolderRebuildsBoundItems)
{
    TemporaryFolder folder;
    std::filesystem::create_directories(folder.path() / "templates");
    const std::unique_ptr<SampleRoot> root = buildProject();
    auto* protection = dynamic_cast<SampleProtection*>(root->getContainers()->at(0));
    ProjectFile file((folder.path() / "templates").string());
    file.saveTemplate(*protection, folder.file("templates/ProjectFileDistance.xml"));
    NodeTemplateActivatorCollection::instance().loadFolder((folder.path() / "templates").string());
    protection->setTemplateActivator(NodeTemplateActivatorCollection::instance().find("ProjectFileDistance"));
    file.save(*root, folder.file("project.xml"));
    EXPECT_NE(fileText(folder.file("project.xml")).find("TemplateXml=\"ProjectFileDistance\""), std::string::npos);

    const std::unique_ptr<Node> loaded = file.load(folder.file("project.xml"));
    auto* loadedProtection =
        dynamic_cast<SampleProtection*>(static_cast<SampleRoot*>(loaded.get())->getContainers()->at(0));
    ASSERT_NE(loadedProtection, nullptr);
    ASSERT_NE(loadedProtection->getTemplateActivator(), nullptr);
    EXPECT_EQ(loadedProtection->getTemplateActivator()->getName(), "ProjectFileDistance");
    EXPECT_EQ(xmlOf(*loaded, SerializationMode::User), xmlOf(*root, SerializationMode::User));
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

    // A folder that refuses new files: only meaningful where permissions bind, i.e. not for root.
    if (geteuid() != 0) {
        std::filesystem::permissions(folder.path(),
                                     std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
        EXPECT_THROW(file.save(*root, path), std::runtime_error);
        std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_all);
        EXPECT_EQ(fileText(path), old);
    }

    file.save(*root, path);
    EXPECT_NE(fileText(path), old);
    EXPECT_EQ(filesIn(folder.path()), 1u);
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
         "line"},
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
        try {
            file.read(*root, path);
            ADD_FAILURE() << "a bad file was read";
        }
        catch (const std::runtime_error& error) {
            EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
            EXPECT_NE(std::string(error.what()).find(row.reason), std::string::npos) << error.what();
        }
        EXPECT_EQ(xmlOf(*root, SerializationMode::User), before);
    }

    EXPECT_THROW(file.read(*root, folder.file("missing.xml")), std::runtime_error);
    EXPECT_THROW(file.read(*root, folder.file("folder.xml")), std::runtime_error);
    EXPECT_EQ(xmlOf(*root, SerializationMode::User), before);
}

TEST(ProjectFile, LoadRefusesUnknownRoots)
{
    TemporaryFolder folder;
    ProjectFile file;
    writeFile(folder.file("unknown.xml"), "<Project><Node Id='Root' Class='Nowhere::Root'/></Project>");
    writeFile(folder.file("nameless.xml"), "<Project><Node Id='Root'/></Project>");
    EXPECT_THROW(file.load(folder.file("unknown.xml")), std::runtime_error);
    EXPECT_THROW(file.load(folder.file("nameless.xml")), std::runtime_error);
}

TEST(ProjectFile, HostileFilesFetchAndExpandNothing)
{
    TemporaryFolder folder;
    writeFile(folder.file("secret.txt"), "TOP-SECRET");
    const std::string external = "<?xml version='1.0'?>\n<!DOCTYPE Project [<!ENTITY secret SYSTEM 'file://"
                                 + folder.file("secret.txt")
                                 + "'>]>\n<Project><Node Id='Root' Class='ZemTree::HierarchicalContainer'>"
                                   "<Description Text='&secret;'/></Node></Project>";
    writeFile(folder.file("external.xml"), external);

    std::ostringstream laughs;
    laughs << "<?xml version='1.0'?>\n<!DOCTYPE Project [<!ENTITY l0 'ha'>";
    for (int i = 1; i < 12; ++i)
        laughs << "<!ENTITY l" << i << " '&l" << i - 1 << ";&l" << i - 1 << ";&l" << i - 1 << ";&l" << i - 1 << ";&l"
               << i - 1 << ";&l" << i - 1 << ";&l" << i - 1 << ";&l" << i - 1 << ";&l" << i - 1 << ";&l" << i - 1
               << ";'>";
    laughs << "]>\n<Project><Node Id='Root' Class='ZemTree::HierarchicalContainer'><Description Text='&l11;'/>"
              "</Node></Project>";
    writeFile(folder.file("laughs.xml"), laughs.str());

    ProjectFile file;
    for (const char* name : {"external.xml", "laughs.xml"}) {
        SCOPED_TRACE(name);
        try {
            const std::unique_ptr<Node> loaded = file.load(folder.file(name));
            EXPECT_EQ(loaded->getDescription().find("TOP-SECRET"), std::string::npos);
            EXPECT_LT(loaded->getDescription().size(), 100000u);
        }
        catch (const std::runtime_error&) {
            SUCCEED() << "refused";
        }
    }
}

TEST(ProjectFile, ReportGoesIntoItsFolder)
{
    TemporaryFolder folder;
    const std::unique_ptr<SampleRoot> root = buildProject();
    ProjectFile file;
    const std::string path = file.writeReport(*root, (folder.path() / "reports" / "today").string());

    EXPECT_EQ(path, (folder.path() / "reports" / "today" / "report.xml").string());
    xmlpp::DomParser parser;
    parser.parse_file(path);
    const xmlpp::Element* report = parser.get_document()->get_root_node();
    EXPECT_EQ(report->get_name(), ProjectFile::ReportElementName);
    EXPECT_EQ(report->find("Node[@Id='Root']").size(), 1u);
    EXPECT_EQ(report->find("//Node[@DataType='TestContainer']").size(), 6u);
    EXPECT_EQ(report->find("//Node[@DataType='TestContainer'][@StartDate]").size(), 1u);
}
