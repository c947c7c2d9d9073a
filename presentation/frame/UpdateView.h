#pragma once

#include <cstddef>
#include <functional>

// The one road from other threads to the widgets: a queue of functions that the GUI thread runs in the order
// they were posted. Presenters reach it through their UpdateViewGuard.
namespace Zem {

// Fixes the calling thread as the GUI thread and makes the wake-up of its default main context there. Called once
// by the host before the first presenter; again on the same thread it changes nothing, and after
// `shutdownUpdateView` it opens the queue anew. Throws std::logic_error when another thread is the GUI thread.
void initUpdateView();

// Drops what is queued and releases every thread waiting in `waitUpdateView`, for the host before it tears down
// its windows. Later posts from other threads are dropped. Called on the GUI thread.
void shutdownUpdateView();

// Queues `function` for the GUI thread and returns at once; on the GUI thread too it only queues. Throws
// std::logic_error before `initUpdateView`.
void beginUpdateView(const std::function<void()>& function);

// Runs `function` on the GUI thread: at once when called there, else queued behind what is posted, and the caller
// blocks until it has run. An exception of `function` is thrown again in the caller. After shutdown a caller on
// another thread returns without the function having run. Throws std::logic_error before `initUpdateView`.
void waitUpdateView(const std::function<void()>& function);

// True on the thread that `initUpdateView` fixed.
bool isUpdateViewThread();

// How many functions wait in the queue; for tests that pump the main loop until the view is up to date.
std::size_t getPendingUpdateViewCount();

} // namespace Zem
