#include "platform/Worker.hpp"

#include <utility>

namespace pagora {

Worker::Worker()
    : _thread([this] { run(); })
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

void Worker::run()
{
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
