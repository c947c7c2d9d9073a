#pragma once

#include <mutex>
#include <string>

namespace ZemTreeDemo {

// Prints whole lines to standard output. Lines come from the caller, the queue's worker and the tests' own
// threads, so one line is written at a time.
class DemoConsole {
public:
    void printLine(const std::string& line);

private:
    std::mutex _mutex;
};

} // namespace ZemTreeDemo
