#pragma once

#include "running/RunLoop.hpp"

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace pagora::test {

// A run loop driven by the test. Background work runs at once, on the test's thread, unless it is held. Timers and
// posted work wait until the test runs them.
class ManualRunLoop : public RunLoop {
public:
    [[nodiscard]] std::unique_ptr<Timer> performAfterDelay(double seconds, std::function<void()> work) override
    {
        delays.push_back(seconds);
        auto pending = std::make_shared<std::function<void()>>(std::move(work));
        _timers.push_back(pending);
        return std::make_unique<ManualTimer>(std::move(pending));
    }

    Reply<void> performInBackground(std::function<void()> work) override
    {
        if (!holdsBackground) {
            work();
            return Reply<void>::of();
        }
        Reply<void> reply;
        _background.emplace_back(std::move(work), reply.resolver());
        return reply;
    }

    void performOnMainThread(const std::function<void()>& work) override { work(); }

    void postToMainThread(std::function<void()> work) override
    {
        const std::lock_guard lock(_mutex);
        _posted.push_back(std::move(work));
    }

    bool isMainThread() const override { return std::this_thread::get_id() == _mainThread; }

    // Runs the pending timers in the order in which they were set.
    void runTimers()
    {
        for (const auto& timer : std::exchange(_timers, {})) {
            if (const auto pending = timer.lock())
                std::exchange(*pending, [] {})();
        }
    }
    std::size_t pendingTimers() const
    {
        std::size_t count = 0;
        for (const auto& timer : _timers)
            count += !timer.expired();
        return count;
    }

    // Runs and completes the held background work.
    void finishBackground()
    {
        for (auto& [work, answer] : std::exchange(_background, {})) {
            work();
            answer();
        }
    }

    // Runs posted work, including work that is posted meanwhile.
    void runPosted()
    {
        while (const auto work = takePosted())
            (*work)();
    }

    // True if background work is held until `finishBackground`.
    bool holdsBackground = false;
    // The delays of all timers, in seconds.
    std::vector<double> delays;

private:
    // Owns the timer's function. Destroying it cancels the timer.
    class ManualTimer : public Timer {
    public:
        explicit ManualTimer(std::shared_ptr<std::function<void()>> work)
            : _work(std::move(work))
        {
        }

    private:
        std::shared_ptr<std::function<void()>> _work;
    };

    std::optional<std::function<void()>> takePosted()
    {
        const std::lock_guard lock(_mutex);
        if (_posted.empty())
            return std::nullopt;
        auto work = std::move(_posted.front());
        _posted.pop_front();
        return work;
    }

    const std::thread::id _mainThread = std::this_thread::get_id();
    std::vector<std::weak_ptr<std::function<void()>>> _timers;
    std::vector<std::pair<std::function<void()>, Reply<void>::Resolver>> _background;
    std::mutex _mutex;
    std::deque<std::function<void()>> _posted;
};

}
