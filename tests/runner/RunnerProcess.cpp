#include "RunnerProcess.h"

#include "containers/TestCounters.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <poll.h>
#include <regex>
#include <signal.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace ZemDemoTest {

RunnerProcess::RunnerProcess(const std::vector<std::string>& arguments, const std::string& workingFolder,
                             const std::string& path, const std::vector<std::string>& extraEnvironment,
                             unsigned long fileSizeLimit)
{
    int outPipe[2];
    int errPipe[2];
    if (pipe2(outPipe, O_CLOEXEC) != 0 || pipe2(errPipe, O_CLOEXEC) != 0)
        throw std::runtime_error("pipe failed");

    std::vector<std::string> all = {ZTR_RUNNER_PATH};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& argument : all)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    // The environment is made before the fork: the child may only call async-signal-safe functions.
    std::vector<std::string> environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (path.empty() || std::string(*variable).rfind("PATH=", 0) != 0)
            environment.emplace_back(*variable);
    }
    if (!path.empty())
        environment.push_back("PATH=" + path);
    environment.insert(environment.end(), extraEnvironment.begin(), extraEnvironment.end());
    std::vector<char*> envp;
    for (std::string& variable : environment)
        envp.push_back(variable.data());
    envp.push_back(nullptr);

    _pid = fork();
    if (_pid < 0)
        throw std::runtime_error("fork failed");
    if (_pid == 0) {
        // The child: only async-signal-safe calls until exec.
        dup2(outPipe[1], STDOUT_FILENO);
        dup2(errPipe[1], STDERR_FILENO);
        if (chdir(workingFolder.c_str()) != 0)
            _exit(126);
        if (fileSizeLimit > 0) {
            const rlimit limit{fileSizeLimit, fileSizeLimit};
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
                _exit(126);
        }
        execve(argv[0], argv.data(), envp.data());
        _exit(127);
    }
    close(outPipe[1]);
    close(errPipe[1]);
    _outPipe = outPipe[0];
    _errPipe = errPipe[0];
}

RunnerProcess::~RunnerProcess()
{
    if (_pid > 0) {
        kill(_pid, SIGKILL);
        waitpid(_pid, nullptr, 0);
    }
    if (_outPipe >= 0)
        close(_outPipe);
    if (_errPipe >= 0)
        close(_errPipe);
}

bool RunnerProcess::_readSome(std::chrono::steady_clock::time_point deadline)
{
    pollfd fds[2] = {{_outPipe, POLLIN, 0}, {_errPipe, POLLIN, 0}};
    std::string* targets[2] = {&_out, &_err};
    int* pipes[2] = {&_outPipe, &_errPipe};
    if (_outPipe < 0 && _errPipe < 0)
        return false;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0)
        return false;
    const int ready = poll(fds, 2, static_cast<int>(left.count()));
    if (ready < 0)
        return errno == EINTR;
    if (ready == 0)
        return false;
    for (int i = 0; i < 2; ++i) {
        if (fds[i].fd < 0 || fds[i].revents == 0)
            continue;
        char buffer[4096];
        const ssize_t count = read(fds[i].fd, buffer, sizeof(buffer));
        if (count > 0) {
            targets[i]->append(buffer, static_cast<std::size_t>(count));
        }
        else if (count == 0 || errno != EINTR) {
            close(*pipes[i]);
            *pipes[i] = -1;
        }
    }
    return true;
}

bool RunnerProcess::waitForOutput(const std::string& text, std::chrono::milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (_out.find(text) == std::string::npos) {
        if (!_readSome(deadline))
            return false;
    }
    return true;
}

void RunnerProcess::sendSignal(int signal)
{
    if (_pid > 0)
        kill(_pid, signal);
}

int RunnerProcess::finish(std::chrono::milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (_outPipe >= 0 || _errPipe >= 0) {
        if (!_readSome(deadline) && std::chrono::steady_clock::now() >= deadline)
            return -1;
    }
    // Both pipes closed: the child has ended or is about to; waitpid does not block for long.
    int status = 0;
    pid_t waited = 0;
    do {
        waited = waitpid(_pid, &status, 0);
    } while (waited < 0 && errno == EINTR);
    _pid = -1;
    if (waited < 0)
        return -1;
    if (WIFSIGNALED(status))
        return 128 + WTERMSIG(status);
    return WEXITSTATUS(status);
}

RunnerOutcome runRunner(const std::vector<std::string>& arguments, const std::string& workingFolder,
                        const std::string& path, const std::vector<std::string>& environment,
                        unsigned long fileSizeLimit)
{
    RunnerProcess process(arguments, workingFolder, path, environment, fileSizeLimit);
    RunnerOutcome outcome;
    outcome.exitCode = process.finish(std::chrono::seconds(60));
    outcome.out = process.getOut();
    outcome.err = process.getErr();
    return outcome;
}

std::string readFile(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

void writeFile(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

bool hasXsltproc()
{
    const char* const path = std::getenv("PATH");
    std::stringstream folders(path != nullptr ? path : "");
    std::string folder;
    while (std::getline(folders, folder, ':')) {
        if (!folder.empty() && ::access((std::filesystem::path(folder) / "xsltproc").c_str(), X_OK) == 0)
            return true;
    }
    return false;
}

bool parseCounters(const std::string& out, ZemTree::TestCounters& counters)
{
    static const std::regex line("counters: ok (\\d+), failed (\\d+), not tested (\\d+)");
    std::smatch match;
    if (!std::regex_search(out, match, line))
        return false;
    counters.okCount = static_cast<std::uint32_t>(std::stoul(match[1]));
    counters.failedCount = static_cast<std::uint32_t>(std::stoul(match[2]));
    counters.notTestedCount = static_cast<std::uint32_t>(std::stoul(match[3]));
    return true;
}

} // namespace ZemDemoTest
