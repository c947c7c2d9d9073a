#pragma once

#include <string>

namespace ZemDemo {

// Holds back Ctrl-C (SIGINT) and SIGTERM while a file is written, so that a save or a report is never cut off:
// a signal that arrives meanwhile is noted, and when the object goes (the file renamed into place or refused)
// the program ends by that signal as it would have, after one line on stderr. Signals may land on any thread
// (the relay keeps threads of its own), so they are caught by a handler rather than blocked on one thread.
class DeferredSignals {
public:
    // `what` names the file in the line told on stderr ("the project", "the report").
    explicit DeferredSignals(std::string what);
    ~DeferredSignals();
    DeferredSignals(const DeferredSignals&) = delete;
    DeferredSignals& operator=(const DeferredSignals&) = delete;

    // A file-size limit then makes a write fail with EFBIG, which the writer reports, instead of killing the
    // program with SIGXFSZ in the middle of a save. For the whole life of the program.
    static void ignoreFileSizeSignal();

    // Test hook: when the environment variable ZEMTREE_RUN_TEST_PAUSE_MS holds a number of milliseconds, says
    // "pausing before writing <what>" on stdout and waits that long. Called inside the deferred section, so a test
    // can send a signal at a known point of a save.
    static void pauseForTest(const std::string& what);

private:
    std::string _what;
};

} // namespace ZemDemo
