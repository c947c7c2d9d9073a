#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <stdlib.h>
#include <string>

namespace ZemTreeTest {

// A fresh folder of its own under the system's temporary folder, removed with everything in it when the object
// goes, also after a test made parts of it read-only.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "zemtree-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("cannot make a temporary folder");
        _path = pattern;
    }
    ~TemporaryFolder()
    {
        std::error_code error;
        std::filesystem::permissions(_path, std::filesystem::perms::owner_all, error);
        std::filesystem::remove_all(_path, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return _path; }
    // The path of `name` inside the folder.
    std::string file(const std::string& name) const { return (_path / name).string(); }
    // Writes `contents` as the file `name` inside the folder.
    void write(const std::string& name, const std::string& contents) const
    {
        std::ofstream(_path / name, std::ios::binary) << contents;
    }

private:
    std::filesystem::path _path;
};

} // namespace ZemTreeTest
