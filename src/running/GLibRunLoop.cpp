#include "running/GLibRunLoop.hpp"

#include "running/Worker.hpp"

#include <glib-unix.h>

#include <algorithm>
#include <cmath>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace pagora {

namespace {

class GLibTimer : public RunLoop::Timer {
public:
    GLibTimer(double seconds, std::function<void()> work)
        : _work(std::move(work))
    {
        constexpr double maxDelay = 24 * 60 * 60;
        _source = g_timeout_source_new(static_cast<guint>(std::lround(std::clamp(seconds, 0.0, maxDelay) * 1000)));
        g_source_set_callback(_source, &GLibTimer::fire, this, nullptr);
        g_source_attach(_source, nullptr);
    }

    ~GLibTimer() override
    {
        g_source_destroy(_source);
        g_source_unref(_source);
    }

private:
    static gboolean fire(gpointer timer) noexcept
    {
        // The work may destroy its own timer.
        const auto work = std::move(static_cast<GLibTimer*>(timer)->_work);
        work();
        return G_SOURCE_REMOVE;
    }

    std::function<void()> _work;
    GSource* _source;
};

}

GLibRunLoop::GLibRunLoop()
    : _wakeUps(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    const auto wokenUp = [](int, GIOCondition, gpointer loop) noexcept -> gboolean {
        static_cast<GLibRunLoop*>(loop)->runQueue();
        return G_SOURCE_CONTINUE;
    };
    _wakeUpSource = g_unix_fd_add(_wakeUps, G_IO_IN, wokenUp, this);
}

GLibRunLoop::~GLibRunLoop()
{
    finishBackgroundWork();
    g_source_remove(_wakeUpSource);
    close(_wakeUps);
}

void GLibRunLoop::finishBackgroundWork()
{
    std::unique_lock lock(_mutex);
    _closing = true;
    for (;;) {
        _pushed.wait(lock, [this] { return !_queue.empty() || _jobs.empty(); });
        if (_queue.empty())
            break;
        const Item item = std::move(_queue.front());
        _queue.pop_front();
        lock.unlock();
        if (item.kind != Item::Kind::Posted)
            item.work();
        lock.lock();
    }
}

std::unique_ptr<RunLoop::Timer> GLibRunLoop::performAfterDelay(double seconds, std::function<void()> work)
{
    return std::make_unique<GLibTimer>(seconds, std::move(work));
}

Reply<void> GLibRunLoop::performInBackground(std::function<void()> work)
{
    Reply<void> reply;
    _jobs.push_back({ std::make_unique<Worker>(), reply.resolver() });
    const auto job = std::prev(_jobs.end());
    job->worker->perform([this, job, work = std::move(work)]() mutable {
        work();
        // Destroy the captured objects before the work is counted as finished.
        work = nullptr;
        push({ Item::Kind::Finished, [this, job] { finish(job); } });
    });
    return reply;
}

void GLibRunLoop::finish(std::list<Job>::iterator job)
{
    const auto answer = std::move(job->answer);
    _jobs.erase(job);
    if (!_closing)
        (*answer)();
}

void GLibRunLoop::performOnMainThread(const std::function<void()>& work)
{
    if (isMainThread()) {
        work();
        return;
    }
    std::mutex mutex;
    std::condition_variable finished;
    bool isFinished = false;
    push({ Item::Kind::Call, [&] {
              work();
              const std::lock_guard lock(mutex);
              isFinished = true;
              finished.notify_one();
          } });
    std::unique_lock lock(mutex);
    finished.wait(lock, [&] { return isFinished; });
}

void GLibRunLoop::postToMainThread(std::function<void()> work)
{
    push({ Item::Kind::Posted, std::move(work) });
}

bool GLibRunLoop::isMainThread() const
{
    return std::this_thread::get_id() == _mainThread;
}

void GLibRunLoop::push(Item item)
{
    const std::lock_guard lock(_mutex);
    _queue.push_back(std::move(item));
    _pushed.notify_one();
    eventfd_write(_wakeUps, 1);
}

std::optional<GLibRunLoop::Item> GLibRunLoop::take()
{
    const std::lock_guard lock(_mutex);
    if (_queue.empty())
        return std::nullopt;
    auto item = std::move(_queue.front());
    _queue.pop_front();
    return item;
}

void GLibRunLoop::runQueue()
{
    std::size_t count;
    {
        const std::lock_guard lock(_mutex);
        eventfd_t wakeUps;
        eventfd_read(_wakeUps, &wakeUps);
        count = _queue.size();
    }
    // Handle only the items that are queued now. New items wake the loop again, so other sources are not starved.
    for (; count; --count) {
        const auto item = take();
        if (!item)
            return;
        item->work();
    }
}

}
