#include "runner/DeferredSignals.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <signal.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace ZemDemo {

namespace {

std::atomic<int> deferredSignal{0};
static_assert(std::atomic<int>::is_always_lock_free, "the deferred signal must be usable in a signal handler");
struct sigaction previousInt;
struct sigaction previousTerm;

extern "C" void onDeferredSignal(int signal)
{
    int none = 0;
    deferredSignal.compare_exchange_strong(none, signal);
}

} // namespace

DeferredSignals::DeferredSignals(std::string what) : _what(std::move(what))
{
    deferredSignal.store(0);
    struct sigaction action {};
    action.sa_handler = onDeferredSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, &previousInt);
    sigaction(SIGTERM, &action, &previousTerm);
}

DeferredSignals::~DeferredSignals()
{
    sigaction(SIGINT, &previousInt, nullptr);
    sigaction(SIGTERM, &previousTerm, nullptr);
    const int signal = deferredSignal.exchange(0);
    if (signal == 0)
        return;
    std::cout.flush();
    std::cerr << "zemtree-run: " << (signal == SIGINT ? "interrupted" : "terminated") << " while " << _what
              << " was being written; ending now that the writing is over" << std::endl;
    // The previous disposition decides, as if the signal came now: by default the program ends by it.
    raise(signal);
}

void DeferredSignals::ignoreFileSizeSignal()
{
    signal(SIGXFSZ, SIG_IGN);
}

void DeferredSignals::pauseForTest(const std::string& what)
{
    const char* const text = std::getenv("ZEMTREE_RUN_TEST_PAUSE_MS");
    if (text == nullptr || *text == '\0')
        return;
    char* end = nullptr;
    const long milliseconds = std::strtol(text, &end, 10);
    if (*end != '\0' || milliseconds <= 0 || milliseconds > 60000)
        return;
    std::cout << "pausing before writing " << what << std::endl;
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace ZemDemo
