#pragma once

namespace ZemDemo {

// Catches Ctrl-C (SIGINT) and SIGTERM for the life of the object. The handler only counts: the program polls
// getCount() from its main thread and reacts there, since no library code may run inside a signal handler.
// A second signal ends the process at once with exit code 130.
class InterruptFlag {
public:
    InterruptFlag();
    ~InterruptFlag();
    InterruptFlag(const InterruptFlag&) = delete;
    InterruptFlag& operator=(const InterruptFlag&) = delete;

    // How many interrupts arrived so far.
    int getCount() const;
};

} // namespace ZemDemo
