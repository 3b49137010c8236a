#include "running/Worker.hpp"

#include <sys/resource.h>
#include <unistd.h>
#include <utility>

namespace pagora {

namespace {
// Niceness added to a low-urgency thread.
constexpr int lowUrgency = 10;
}

Worker::Worker(Urgency urgency)
    : _thread([this, urgency] { run(urgency); })
{
}

Worker::~Worker()
{
    {
        const std::lock_guard lock(_mutex);
        _closing = true;
    }
    _changed.notify_all();
    _thread.join();
}

void Worker::perform(std::function<void()> work)
{
    {
        const std::lock_guard lock(_mutex);
        _queue.push_back(std::move(work));
    }
    _changed.notify_all();
}

void Worker::wait()
{
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [this] { return _queue.empty() && !_busy; });
}

void Worker::run(Urgency urgency)
{
    // On Linux, each thread has its own nice value.
    if (const auto thread = static_cast<id_t>(gettid()); urgency == Urgency::Low)
        setpriority(PRIO_PROCESS, thread, getpriority(PRIO_PROCESS, thread) + lowUrgency);
    std::unique_lock lock(_mutex);
    for (;;) {
        _changed.wait(lock, [this] { return _closing || !_queue.empty(); });
        if (_queue.empty())
            return;
        auto work = std::move(_queue.front());
        _queue.pop_front();
        _busy = true;
        lock.unlock();
        work();
        work = nullptr;
        lock.lock();
        _busy = false;
        _changed.notify_all();
    }
}

}
