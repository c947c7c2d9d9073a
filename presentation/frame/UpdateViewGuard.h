#pragma once

#include "presentation/frame/UpdateView.h"

#include <atomic>
#include <memory>

namespace Zem {

// A presenter's member that hands view updates from model slots to the GUI thread. What it posts holds only a
// weak pointer to its token: once the presenter (and with it the guard) is gone, queued work does nothing.
class UpdateViewGuard {
public:
    class LifetimeToken {};

    UpdateViewGuard() : _token(std::make_shared<LifetimeToken>()) {}
    UpdateViewGuard(const UpdateViewGuard&) = delete;
    UpdateViewGuard& operator=(const UpdateViewGuard&) = delete;

    // Runs on any thread; returns at once, `f` runs later on the GUI thread.
    template <class F> void safeBeginUpdateView(F f)
    {
        std::weak_ptr<LifetimeToken> alive = _token;
        beginUpdateView([alive, f]() mutable {
            if (!alive.lock())
                return;
            f();
        });
    }

    // Runs on any thread; blocks until `f` has run on the GUI thread (at once when called there).
    template <class F> void safeWaitUpdateView(F f)
    {
        std::weak_ptr<LifetimeToken> alive = _token;
        waitUpdateView([alive, f]() mutable {
            if (!alive.lock())
                return;
            f();
        });
    }

    // As safeBeginUpdateView, but while an update is queued and has not started, a new one posts nothing: `f`
    // reads the model when it runs, so a burst of changes ends in a few repaints. The flag is cleared before `f`
    // starts, so a change made while `f` reads the model posts again. Runs on any thread.
    template <class F> void safeBeginCoalescedUpdateView(F f)
    {
        if (_isUpdatePending.exchange(true))
            return;
        std::weak_ptr<LifetimeToken> alive = _token;
        std::atomic<bool>* const pending = &_isUpdatePending;
        beginUpdateView([alive, pending, f]() mutable {
            if (!alive.lock())
                return;
            // The guard is alive as long as its token is, and both live on the GUI thread, where this runs.
            pending->store(false);
            f();
        });
    }

private:
    std::atomic<bool> _isUpdatePending{false};
    std::shared_ptr<LifetimeToken> _token;
};

} // namespace Zem
