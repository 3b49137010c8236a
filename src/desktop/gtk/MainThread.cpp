#include "desktop/gtk/MainThread.hpp"

#include <glib.h>

#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace pagora {

namespace {

// The thread that initialises the program's globals is the main thread.
const std::thread::id mainThread = std::this_thread::get_id();

struct Waiting {
    std::mutex mutex;
    std::deque<std::function<void()>> work;
};

Waiting& waiting()
{
    static Waiting instance;
    return instance;
}

gboolean runWaiting(gpointer)
{
    std::deque<std::function<void()>> work;
    {
        const std::lock_guard lock(waiting().mutex);
        work.swap(waiting().work);
    }
    for (auto& each : work)
        each();
    return G_SOURCE_REMOVE;
}

}

void onMainThread(std::function<void()> work)
{
    if (std::this_thread::get_id() == mainThread) {
        work();
        return;
    }
    bool isFirst = false;
    {
        const std::lock_guard lock(waiting().mutex);
        isFirst = waiting().work.empty();
        waiting().work.push_back(std::move(work));
    }
    if (isFirst)
        g_idle_add_full(G_PRIORITY_DEFAULT, runWaiting, nullptr, nullptr);
}

}
