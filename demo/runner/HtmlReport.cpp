#include "runner/HtmlReport.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace fs = std::filesystem;

namespace ZemDemo {

namespace {

bool isFile(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error);
}

// The folder of the running program, read from /proc; empty when it cannot be told.
fs::path programFolder()
{
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : program.parent_path();
}

// Everything the descriptor gives until its end; a few kilobytes are kept, the rest is read and dropped so that
// the child never blocks on a full pipe.
std::string readAll(int descriptor)
{
    constexpr std::size_t kept = 16384;
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return text;
        if (text.size() < kept)
            text.append(buffer, static_cast<std::size_t>(count));
    }
}

// The first line of `text` that is not blank, without its surrounding blanks.
std::string firstLine(const std::string& text)
{
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        const std::string line = text.substr(start, end - start);
        const auto first = line.find_first_not_of(" \t\r");
        if (first != std::string::npos)
            return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
        start = end + 1;
    }
    return std::string();
}

} // namespace

std::string HtmlReport::findStylesheet(const std::string& explicitPath)
{
    if (!explicitPath.empty())
        return isFile(explicitPath) ? explicitPath : std::string();

    // A runner started from its build tree takes the stylesheet of its source tree.
    const fs::path sourceTree = fs::path(ZTR_SOURCE_DATA_DIR) / "report.xsl";
    if (isFile(sourceTree))
        return sourceTree.string();

    const fs::path folder = programFolder();
    if (!folder.empty()) {
        const fs::path installed = folder.parent_path() / "share" / "zemtree" / "report.xsl";
        if (isFile(installed))
            return installed.string();
    }
    return "";
}

HtmlReport::Outcome HtmlReport::render(const std::string& stylesheet, const std::string& reportPath,
                                       const std::string& htmlPath, const std::string& language, std::string& error)
{
    std::vector<std::string> arguments = {"xsltproc", "--nonet", "--stringparam", "lang",    language,
                                          "-o",       htmlPath,  stylesheet,      reportPath};
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    // xsltproc's stdout is not used since it writes the file itself. Its messages come back through a pipe, so
    // that a failure is told in one line of ours, with the first of them, however many it writes.
    int messages[2];
    if (pipe2(messages, O_CLOEXEC) != 0) {
        error = std::string("xsltproc cannot be started: ") + std::strerror(errno);
        return Outcome::Failed;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, messages[1], STDERR_FILENO);

    pid_t child = 0;
    const int spawnError = posix_spawnp(&child, "xsltproc", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(messages[1]);
    if (spawnError != 0)
        ::close(messages[0]);
    if (spawnError == ENOENT)
        return Outcome::NoXsltproc;
    if (spawnError != 0) {
        error = std::string("xsltproc cannot be started: ") + std::strerror(spawnError);
        return Outcome::Failed;
    }
    const std::string told = readAll(messages[0]);
    ::close(messages[0]);

    int status = 0;
    pid_t waited = 0;
    do {
        waited = waitpid(child, &status, 0);
    } while (waited < 0 && errno == EINTR);
    if (waited < 0) {
        error = std::string("xsltproc cannot be waited for: ") + std::strerror(errno);
        return Outcome::Failed;
    }
    // glibc reports a program that cannot be found as the exit code 127 of the child.
    if (WIFEXITED(status) && WEXITSTATUS(status) == 127)
        return Outcome::NoXsltproc;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        error = "xsltproc failed to make " + htmlPath
                + (WIFEXITED(status) ? " (exit code " + std::to_string(WEXITSTATUS(status)) + ")" : " (killed)");
        const std::string first = firstLine(told);
        if (!first.empty())
            error += ": " + first;
        return Outcome::Failed;
    }
    return Outcome::Written;
}

} // namespace ZemDemo
