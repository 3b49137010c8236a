#pragma once

#include "running/Reply.hpp"

#include <functional>
#include <memory>

namespace pagora {

// The main thread's run loop, and the only way to and from other threads.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    // A delayed call. Destroying it cancels the call.
    class Timer {
    public:
        virtual ~Timer() = default;
    };

    // Calls `work` once on the main thread, `seconds` from now. Main thread.
    [[nodiscard]] virtual std::unique_ptr<Timer> performAfterDelay(double seconds, std::function<void()> work) = 0;

    // Runs `work` on a background thread of its own; the reply comes on the main thread when it is done. Dropping the
    // reply does not stop the work. Main thread.
    virtual Reply<void> performInBackground(std::function<void()> work) = 0;

    // Runs `work` on the main thread and waits for it; runs it at once when called there. Any thread.
    virtual void performOnMainThread(const std::function<void()>& work) = 0;

    // Runs `work` on the main thread soon, in the order of the calls. Any thread.
    virtual void postToMainThread(std::function<void()> work) = 0;

    virtual bool isMainThread() const = 0;
};

}
