// Every whole project the fuzz corpus starts from, and the sample files, saved, loaded and saved again: the two
// saves are the same text, and a file that itself came from a save comes back byte for byte. Seeds named "older-"
// were saved before their tests gained settings; they load and round-trip, and their first save adds what is new.

#include "TemporaryFolder.h"
#include "containers/ProjectFile.h"
#include "core/tree/Node.h"
#include "relay/DemoRelay.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string fileText(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// What the project writer puts first; a file that begins so was written by a save.
bool cameFromASave(const std::string& text)
{
    return text.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Project>", 0) == 0;
}

TEST(ProjectRoundTrip, CorpusAndSampleFilesSaveLoadAndSaveTheSame)
{
    ZemDemo::registerDemoTypes();
    const fs::path data(ZTR_DEMO_DATA);
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(fs::path(ZTR_SOURCE_ROOT) / "fuzz/corpus/projectload"))
        files.push_back(entry.path());
    for (const auto& entry : fs::directory_iterator(data)) {
        if (entry.path().extension() == ".xml")
            files.push_back(entry.path());
    }
    ASSERT_GE(files.size(), 10u);

    ZemTreeTest::TemporaryFolder folder;
    ZemTree::ProjectFile projects(data.string());
    int fromSaves = 0;
    for (const fs::path& file : files) {
        SCOPED_TRACE(file.string());
        std::unique_ptr<ZemTree::Node> root;
        try {
            root = projects.load(file.string());
        }
        catch (const std::runtime_error& error) {
            ADD_FAILURE() << error.what();
            continue;
        }
        projects.save(*root, folder.file("first.xml"));
        std::unique_ptr<ZemTree::Node> again = projects.load(folder.file("first.xml"));
        projects.save(*again, folder.file("second.xml"));
        const std::string first = fileText(folder.file("first.xml"));
        EXPECT_EQ(first, fileText(folder.file("second.xml")));
        const std::string original = fileText(file);
        if (cameFromASave(original) && file.filename().string().rfind("older-", 0) != 0) {
            ++fromSaves;
            EXPECT_EQ(original, first);
        }
    }
    EXPECT_GE(fromSaves, 3) << "the corpus and the sample hold saved projects";
}

} // namespace
