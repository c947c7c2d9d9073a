#include "presentation/support/MainLoopPump.h"

#include "presentation/frame/UpdateView.h"

#include <glib.h>

#include <thread>

namespace PresentationTest {

namespace {

// One round of everything ready; a short pause when nothing was, so that a waiting worker gets the processor.
void iterate()
{
    bool isAny = false;
    while (g_main_context_iteration(nullptr, FALSE))
        isAny = true;
    if (!isAny)
        std::this_thread::sleep_for(std::chrono::microseconds(200));
}

} // namespace

bool pumpUntilIdle(std::chrono::milliseconds limit)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (std::chrono::steady_clock::now() < deadline) {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        if (Zem::getPendingUpdateViewCount() == 0 && !g_main_context_pending(nullptr))
            return true;
        iterate();
    }
    return false;
}

bool pumpUntil(const std::function<bool()>& isDone, std::chrono::milliseconds limit)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!isDone()) {
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        iterate();
    }
    return pumpUntilIdle(
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()));
}

} // namespace PresentationTest
