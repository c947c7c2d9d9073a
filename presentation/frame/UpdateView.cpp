#include "presentation/frame/UpdateView.h"

#include <glibmm/dispatcher.h>

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace Zem {

namespace {

// What a waiting caller looks at; guarded by the queue's mutex.
struct WaitState {
    bool isDone = false;
    std::exception_ptr error;
};

struct Pending {
    std::function<void()> function;
    std::shared_ptr<WaitState> wait; // null for a function nobody waits for
};

// The queue and its wake-up. `generation` grows at each shutdown, so that a waiter of a dropped function is
// released even when the queue is opened again before it wakes.
struct Queue {
    std::mutex mutex;
    std::condition_variable done;
    std::deque<Pending> items;
    std::unique_ptr<Glib::Dispatcher> dispatcher;
    std::thread::id guiThread;
    bool isOpen = false;
    unsigned long generation = 0;
};

Queue& queue()
{
    static Queue instance;
    return instance;
}

void requireInited(const Queue& q)
{
    if (q.guiThread == std::thread::id())
        throw std::logic_error("The view update queue is used before initUpdateView");
}

// Appends under the lock; the wake-up is sent only when the queue was empty, because one drain takes everything
// that is there. Emitting under the lock keeps the dispatcher alive while a worker uses it.
void push(Queue& q, Pending pending)
{
    const bool wasEmpty = q.items.empty();
    q.items.push_back(std::move(pending));
    if (wasEmpty && q.dispatcher)
        q.dispatcher->emit();
}

// Runs on the GUI thread, woken by the dispatcher. Runs only what was queued when it started, so that a worker
// posting without pause cannot starve the main loop; the rest waits for the next wake-up. No lock is held while a
// function runs.
void drain()
{
    Queue& q = queue();
    std::size_t count;
    {
        const std::lock_guard<std::mutex> lock(q.mutex);
        count = q.items.size();
    }
    for (; count > 0; --count) {
        Pending pending;
        {
            const std::lock_guard<std::mutex> lock(q.mutex);
            if (q.items.empty())
                return;
            pending = std::move(q.items.front());
            q.items.pop_front();
        }
        if (!pending.wait) {
            try {
                pending.function();
            }
            catch (...) {
                // The rest still runs later; the exception ends in the main loop's handler, loudly.
                const std::lock_guard<std::mutex> lock(q.mutex);
                if (!q.items.empty() && q.dispatcher)
                    q.dispatcher->emit();
                throw;
            }
            continue;
        }
        std::exception_ptr error;
        try {
            pending.function();
        }
        catch (...) {
            error = std::current_exception();
        }
        {
            // The exception moves to the waiter, which alone holds it from now on.
            const std::lock_guard<std::mutex> lock(q.mutex);
            pending.wait->isDone = true;
            pending.wait->error = std::move(error);
        }
        q.done.notify_all();
    }
    const std::lock_guard<std::mutex> lock(q.mutex);
    if (!q.items.empty() && q.dispatcher)
        q.dispatcher->emit();
}

} // namespace

void initUpdateView()
{
    Queue& q = queue();
    const std::thread::id self = std::this_thread::get_id();
    {
        const std::lock_guard<std::mutex> lock(q.mutex);
        if (q.guiThread != std::thread::id() && q.guiThread != self && q.isOpen)
            throw std::logic_error("The view update queue belongs to another thread");
        if (q.isOpen && q.guiThread == self)
            return;
    }
    // Made outside the lock: the dispatcher attaches to the calling thread's default main context.
    auto dispatcher = std::make_unique<Glib::Dispatcher>();
    dispatcher->connect(&drain);
    std::unique_ptr<Glib::Dispatcher> former;
    {
        const std::lock_guard<std::mutex> lock(q.mutex);
        former = std::move(q.dispatcher);
        q.dispatcher = std::move(dispatcher);
        q.guiThread = self;
        q.isOpen = true;
        if (!q.items.empty())
            q.dispatcher->emit();
    }
}

void shutdownUpdateView()
{
    Queue& q = queue();
    std::deque<Pending> dropped;
    std::unique_ptr<Glib::Dispatcher> dispatcher;
    {
        const std::lock_guard<std::mutex> lock(q.mutex);
        q.isOpen = false;
        ++q.generation;
        dropped.swap(q.items);
        dispatcher = std::move(q.dispatcher);
    }
    q.done.notify_all();
    // The dropped functions and the dispatcher go here, outside the lock, on the GUI thread.
}

void beginUpdateView(const std::function<void()>& function)
{
    Queue& q = queue();
    const std::lock_guard<std::mutex> lock(q.mutex);
    requireInited(q);
    if (!q.isOpen)
        return;
    push(q, Pending{function, nullptr});
}

void waitUpdateView(const std::function<void()>& function)
{
    Queue& q = queue();
    std::unique_lock<std::mutex> lock(q.mutex);
    requireInited(q);
    if (q.guiThread == std::this_thread::get_id()) {
        lock.unlock();
        function();
        return;
    }
    if (!q.isOpen)
        return;
    auto state = std::make_shared<WaitState>();
    const unsigned long generation = q.generation;
    push(q, Pending{function, state});
    q.done.wait(lock, [&] { return state->isDone || q.generation != generation; });
    const std::exception_ptr error = std::move(state->error);
    lock.unlock();
    if (error)
        std::rethrow_exception(error);
}

bool isUpdateViewThread()
{
    Queue& q = queue();
    const std::lock_guard<std::mutex> lock(q.mutex);
    return q.guiThread == std::this_thread::get_id();
}

std::size_t getPendingUpdateViewCount()
{
    Queue& q = queue();
    const std::lock_guard<std::mutex> lock(q.mutex);
    return q.items.size();
}

} // namespace Zem
