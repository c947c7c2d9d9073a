#include "runner/ProjectCheck.h"

#include "containers/ProjectFile.h"
#include "core/tree/Node.h"

#include <exception>
#include <memory>

namespace ZemDemo {

ProjectCheck checkProjectFile(const std::string& path, const std::string& templateFolder)
{
    ProjectCheck check;
    ZemTree::ProjectFile file(templateFolder);
    try {
        const std::unique_ptr<ZemTree::Node> root = file.load(path);
        file.noteUnkeptContent(*root, path);
    }
    catch (const std::exception& error) {
        check.error = error.what();
        return check;
    }
    check.isLoaded = true;
    check.problems = file.getProblems();
    return check;
}

} // namespace ZemDemo
