#include "core/tree/DisplayXmlParameters.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace ZemTree {

namespace fs = std::filesystem;

DisplayXmlParameters::DisplayXmlParameters(const std::string& reportFolder, const std::string& imageSubFolder,
                                           const std::string& imagePrefix)
    : _reportFolder(reportFolder), _imageSubFolder(imageSubFolder), _imagePrefix(imagePrefix)
{
}

std::string DisplayXmlParameters::getImageFolder() const
{
    if (_imageSubFolder.empty())
        return _reportFolder;
    return (fs::path(_reportFolder) / _imageSubFolder).string();
}

std::string DisplayXmlParameters::generateNewImageName()
{
    const fs::path folder = getImageFolder().empty() ? fs::path(".") : fs::path(getImageFolder());
    std::error_code error;
    fs::create_directories(folder, error);
    if (!error && !fs::is_directory(folder, error) && !error)
        error = std::make_error_code(std::errc::not_a_directory);
    if (error)
        throw std::runtime_error("Cannot create the report image folder " + folder.string() + ": " + error.message());

    // The counter alone keeps this report's names apart; the check on disk skips pictures left by another report.
    while (true) {
        ++_lastNumber;
        char number[32];
        std::snprintf(number, sizeof(number), "%04llu", static_cast<unsigned long long>(_lastNumber));
        const fs::path candidate = folder / (_imagePrefix + number + ".png");
        if (!fs::exists(candidate, error))
            return candidate.string();
    }
}

} // namespace ZemTree
