#pragma once

#include "containers/TestCounters.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <iosfwd>
#include <mutex>
#include <string>

namespace ZemDemo {

// How one test of the run ended, judged from its counters.
enum class TestVerdict { Passed, Failed, Unfinished };

// Failed when a result is bad or in error, unfinished when a result is missing, passed otherwise.
TestVerdict judgeTest(const ZemTree::TestCounters& counters);
const char* verdictText(TestVerdict verdict);
// "ok 3, failed 1, not tested 0".
std::string countersText(const ZemTree::TestCounters& counters);

// The live display of a run. The queue's worker and the tests' threads post what happens; the main thread alone
// prints, in waitAndPrint. On a terminal one status line is rewritten in place ("\r") and each finished test
// leaves a line of its own; otherwise every state line is printed as a line.
class RunProgress {
public:
    RunProgress(std::ostream& out, std::size_t testCount, bool isTerminal);
    RunProgress(const RunProgress&) = delete;
    RunProgress& operator=(const RunProgress&) = delete;

    // Any thread.
    void postStateLine(const std::string& line);
    void postTestFinished(const std::string& description, const ZemTree::TestCounters& counters);
    void postRunFinished();

    // Main thread. Waits up to `timeout` for news, prints what arrived, and tells whether the run is over.
    bool waitAndPrint(std::chrono::milliseconds timeout);
    // Main thread: a line of the program's own, printed above the status line.
    void printNote(const std::string& line);
    // Main thread: clears the status line for good.
    void close();

    int getPassedCount() const { return _passed; }
    int getFailedCount() const { return _failed; }
    int getUnfinishedCount() const { return _unfinished; }
    int getFinishedCount() const { return _finished; }

private:
    struct Event {
        enum class Kind { State, TestFinished, RunFinished } kind;
        std::string text;
        ZemTree::TestCounters counters;
    };

    void _post(Event event);
    void _print(const Event& event);
    std::string _counterText() const;
    void _drawStatus();
    void _clearStatus();

    std::ostream& _out;
    const std::size_t _testCount;
    const bool _isTerminal;

    // Shared with the posting threads.
    std::mutex _mutex;
    std::condition_variable _condition;
    std::deque<Event> _events;

    // Main thread only.
    std::string _stateLine;
    bool _isStatusShown = false;
    bool _isOver = false;
    int _passed = 0;
    int _failed = 0;
    int _unfinished = 0;
    int _finished = 0;
};

} // namespace ZemDemo
