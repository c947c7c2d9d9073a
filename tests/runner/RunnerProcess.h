#pragma once

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace ZemTree {
struct TestCounters;
}

namespace ZemDemoTest {

// zemtree-run started as a child process in a working folder, with its stdout and stderr read through pipes.
// Every wait has a time-out; a child that outlives it is killed and the wait reports failure.
class RunnerProcess {
public:
    // `path`, when not empty, replaces the PATH the child inherits; `environment` ("NAME=value") is added to
    // what it inherits; a `fileSizeLimit` above zero limits the size of the files it writes (RLIMIT_FSIZE).
    RunnerProcess(const std::vector<std::string>& arguments, const std::string& workingFolder,
                  const std::string& path = "", const std::vector<std::string>& environment = {},
                  unsigned long fileSizeLimit = 0);
    ~RunnerProcess();
    RunnerProcess(const RunnerProcess&) = delete;
    RunnerProcess& operator=(const RunnerProcess&) = delete;

    // Reads output until stdout holds `text`; false when the time-out or the end of the output comes first.
    bool waitForOutput(const std::string& text, std::chrono::milliseconds timeout);
    void sendSignal(int signal);
    // Reads the rest of the output and waits for the exit. Returns the exit code, 128 + signal for a killed
    // child, or -1 on time-out (the child is then killed).
    int finish(std::chrono::milliseconds timeout);

    const std::string& getOut() const { return _out; }
    const std::string& getErr() const { return _err; }

private:
    // Reads what is available within `timeout`; false once both pipes are closed or the time is over.
    bool _readSome(std::chrono::steady_clock::time_point deadline);

    pid_t _pid = -1;
    int _outPipe = -1;
    int _errPipe = -1;
    std::string _out;
    std::string _err;
};

// Runs the runner to its end (time-out 60 s).
struct RunnerOutcome {
    int exitCode = -1;
    std::string out;
    std::string err;
};
RunnerOutcome runRunner(const std::vector<std::string>& arguments, const std::string& workingFolder,
                        const std::string& path = "", const std::vector<std::string>& environment = {},
                        unsigned long fileSizeLimit = 0);

// The whole contents of a file, empty when it cannot be read.
std::string readFile(const std::string& path);
// Writes `text` as the whole file.
void writeFile(const std::string& path, const std::string& text);
// Whether xsltproc is on the PATH, which the HTML report needs.
bool hasXsltproc();
// The counters the runner printed in its line "counters: ok A, failed B, not tested C".
bool parseCounters(const std::string& out, ZemTree::TestCounters& counters);

} // namespace ZemDemoTest
