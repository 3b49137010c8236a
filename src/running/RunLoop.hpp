#pragma once

#include "running/Reply.hpp"

#include <functional>
#include <memory>

namespace pagora {

// The main thread's run loop. All work that changes threads goes through it.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    // A delayed call. Destroying it cancels the call.
    class Timer {
    public:
        virtual ~Timer() = default;
    };

    // Calls `work` once on the main thread after `seconds`. Called on the main thread.
    [[nodiscard]] virtual std::unique_ptr<Timer> performAfterDelay(double seconds, std::function<void()> work) = 0;

    // Runs `work` on a new background thread and replies on the main thread when it is finished. Dropping the reply
    // does not stop the work. Called on the main thread.
    virtual Reply<void> performInBackground(std::function<void()> work) = 0;

    // Runs `work` on the main thread and waits for it; on the main thread, runs it directly. Thread-safe.
    virtual void performOnMainThread(const std::function<void()>& work) = 0;

    // Queues `work` for the main thread. Queued work runs in the order of the calls. Thread-safe.
    virtual void postToMainThread(std::function<void()> work) = 0;

    virtual bool isMainThread() const = 0;
};

}
