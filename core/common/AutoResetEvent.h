#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Zem {

// A one-shot gate between threads: set() opens it, and the first wait that passes closes it again.
// A set() that arrives before anybody waits is kept, so a waiter that comes late does not block;
// several sets before one wait count as one.
class AutoResetEvent {
public:
    AutoResetEvent() = default;
    AutoResetEvent(const AutoResetEvent&) = delete;
    AutoResetEvent& operator=(const AutoResetEvent&) = delete;

    // Opens the gate and releases at most one waiter. Safe from any thread.
    void set();
    // Closes the gate without waiting.
    void reset();

    // Blocks until the gate is open, then closes it.
    void waitOne();
    // Blocks until the gate is open or `timeout` has passed. True when the gate was open (and is now closed),
    // false on time-out.
    bool waitOne(std::chrono::milliseconds timeout);

private:
    std::mutex _mutex;
    std::condition_variable _condition;
    bool _isSet = false;
};

} // namespace Zem
