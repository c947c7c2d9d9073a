#pragma once

#include <memory>
#include <string>
#include <vector>

namespace ZemTree {
class Node;
}

namespace ZemDemo {

// What `zemtree-run --check` finds in a project file without running it.
struct ProjectCheck {
    // False when the file cannot be loaded at all; `error` then tells why, in one line.
    bool isLoaded = false;
    std::string error;
    // Each problem of a file that loads, one line each, naming the node by its path.
    std::vector<std::string> problems;
    // The loaded tree, for checks of its own that a caller adds.
    std::unique_ptr<ZemTree::Node> root;

    ProjectCheck();
    ~ProjectCheck();
    ProjectCheck(ProjectCheck&&) noexcept;
    ProjectCheck& operator=(ProjectCheck&&) noexcept;
};

// Loads the project at `path` with the templates of `templateFolder` and lists its problems, those of the load
// and what a save would drop. Never throws for a bad file.
ProjectCheck checkProjectFile(const std::string& path, const std::string& templateFolder);

} // namespace ZemDemo
