#pragma once

#include <cstdint>
#include <string>

namespace ZemTree {

// What the report frame hands along while a tree writes its report: where the report goes and where its
// pictures go. One object serves one report, so the picture names it gives never repeat.
class DisplayXmlParameters {
public:
    // `imageSubFolder` is relative to `reportFolder`; an empty one puts the pictures beside the report.
    explicit DisplayXmlParameters(const std::string& reportFolder, const std::string& imageSubFolder = "images",
                                  const std::string& imagePrefix = "image_");
    DisplayXmlParameters(const DisplayXmlParameters&) = delete;
    DisplayXmlParameters& operator=(const DisplayXmlParameters&) = delete;

    // A path "<image folder>/<prefix>NNNN.png" that no earlier call gave and that no file has yet. Creates the
    // image folder when it is missing; throws std::runtime_error when it cannot. The report names the picture by
    // its bare file name, so whoever shows the report looks for it in getImageFolder().
    std::string generateNewImageName();

    const std::string& getReportFolder() const { return _reportFolder; }
    std::string getImageFolder() const;

private:
    std::string _reportFolder;
    std::string _imageSubFolder;
    std::string _imagePrefix;
    std::uint64_t _lastNumber = 0;
};

} // namespace ZemTree
