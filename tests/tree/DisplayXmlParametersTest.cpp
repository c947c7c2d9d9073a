#include "TemporaryFolder.h"
#include "core/tree/DisplayXmlParameters.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using ZemTree::DisplayXmlParameters;

using TempFolder = ZemTreeTest::TemporaryFolder;

TEST(DisplayXmlParametersTest, NamesAreDistinctAndFreeAndInTheImageFolder)
{
    const TempFolder temp;
    DisplayXmlParameters parameters(temp.path().string());
    const fs::path imageFolder = temp.path() / "images";
    EXPECT_EQ(imageFolder.string(), parameters.getImageFolder());

    // A picture left by an earlier report must not be overwritten.
    fs::create_directories(imageFolder);
    std::ofstream(imageFolder / "image_0002.png") << "old";

    std::set<std::string> names;
    for (int i = 0; i < 3; ++i) {
        const std::string name = parameters.generateNewImageName();
        SCOPED_TRACE(name);
        EXPECT_EQ(imageFolder, fs::path(name).parent_path());
        EXPECT_EQ(".png", fs::path(name).extension());
        EXPECT_FALSE(fs::exists(name));
        EXPECT_TRUE(names.insert(name).second);
        // The caller writes the picture; the next name must still differ.
        std::ofstream(name) << "png";
    }
    EXPECT_EQ(0u, names.count((imageFolder / "image_0002.png").string()));
}

TEST(DisplayXmlParametersTest, CreatesTheImageFolderAndHonoursSubFolderAndPrefix)
{
    const TempFolder temp;
    DisplayXmlParameters parameters((temp.path() / "report").string(), "pictures/graphs", "graph_");
    const std::string name = parameters.generateNewImageName();
    EXPECT_TRUE(fs::is_directory(temp.path() / "report" / "pictures" / "graphs"));
    EXPECT_EQ("graph_0001.png", fs::path(name).filename().string());

    DisplayXmlParameters beside(temp.path().string(), "");
    EXPECT_EQ(temp.path(), fs::path(beside.generateNewImageName()).parent_path());
}

TEST(DisplayXmlParametersTest, ThrowsWhenTheFolderCannotBeMade)
{
    const TempFolder temp;
    std::ofstream(temp.path() / "file") << "x";
    DisplayXmlParameters parameters((temp.path() / "file").string());
    EXPECT_THROW(parameters.generateNewImageName(), std::runtime_error);
}

} // namespace
