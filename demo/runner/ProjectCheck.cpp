#include "runner/ProjectCheck.h"

#include "containers/ProjectFile.h"
#include "core/tree/Node.h"

#include <exception>
#include <memory>

namespace ZemDemo {

ProjectCheck::ProjectCheck() = default;
ProjectCheck::~ProjectCheck() = default;
ProjectCheck::ProjectCheck(ProjectCheck&&) noexcept = default;
ProjectCheck& ProjectCheck::operator=(ProjectCheck&&) noexcept = default;

ProjectCheck checkProjectFile(const std::string& path, const std::string& templateFolder)
{
    ProjectCheck check;
    ZemTree::ProjectFile file(templateFolder);
    try {
        check.root = file.load(path);
        file.noteUnkeptContent(*check.root, path);
    }
    catch (const std::exception& error) {
        check.root.reset();
        check.error = error.what();
        return check;
    }
    check.isLoaded = true;
    check.problems = file.getProblems();
    return check;
}

} // namespace ZemDemo
