#include "core/common/PathHelper.h"

namespace Zem {

std::string getPathFileName(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string getPathFileNameWithoutExtension(const std::string& path)
{
    const std::string name = getPathFileName(path);
    if (name == "..")
        return name;
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || dot == 0)
        return name;
    return name.substr(0, dot);
}

} // namespace Zem
