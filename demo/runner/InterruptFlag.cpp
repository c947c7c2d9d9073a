#include "runner/InterruptFlag.h"

#include <atomic>
#include <signal.h>
#include <unistd.h>

namespace ZemDemo {

namespace {

// The signal may be handled on any thread, so the count is a lock-free atomic, which a handler may use.
std::atomic<int> interruptCount{0};
static_assert(std::atomic<int>::is_always_lock_free, "the interrupt count must be usable in a signal handler");
struct sigaction previousInt;
struct sigaction previousTerm;

extern "C" void onInterrupt(int)
{
    if (interruptCount.fetch_add(1) >= 1) {
        // The user insists: leave without saving. Only async-signal-safe calls here.
        static const char message[] = "\nzemtree-run: interrupted again, leaving without saving\n";
        const ssize_t written = write(STDERR_FILENO, message, sizeof(message) - 1);
        (void)written;
        _exit(130);
    }
}

} // namespace

InterruptFlag::InterruptFlag()
{
    interruptCount.store(0);
    struct sigaction action {};
    action.sa_handler = onInterrupt;
    sigemptyset(&action.sa_mask);
    // The signal may land on any thread, the relay's own included: their system calls go on undisturbed.
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, &previousInt);
    sigaction(SIGTERM, &action, &previousTerm);
}

InterruptFlag::~InterruptFlag()
{
    sigaction(SIGINT, &previousInt, nullptr);
    sigaction(SIGTERM, &previousTerm, nullptr);
}

int InterruptFlag::getCount() const
{
    return interruptCount.load();
}

} // namespace ZemDemo
