#pragma once

#include "running/Task.hpp"

#include <deque>
#include <functional>

namespace pagora {

// Runs coroutines one after another, never interleaved. Reports run before actions, and actions wait while they are
// held, so a page that is loading is reported before the user's next action uses it. The destructor ends the running
// coroutine at its current wait and drops the others. Main thread only.
class SerialQueue {
public:
    using Work = std::function<Task<void>()>;

    void enqueueReport(Work work);
    void enqueueAction(Work work);

    void holdActions();
    void releaseActions();
    // Ends the running coroutine at its current wait and continues with the next. A coroutine may call it only while it
    // waits.
    void dropCurrent();
    bool actionsAreHeld() const { return _held; }

    // Returns whether no work is running or able to run.
    bool isIdle() const { return !_running; }

    // Sets the callback for each time the queue becomes empty, before it becomes idle.
    void setWhenDrained(Work whenDrained) { _whenDrained = std::move(whenDrained); }

private:
    void start();
    bool takeNext();
    Task<void> drain();

    std::deque<Work> _reports;
    std::deque<Work> _actions;
    Work _whenDrained;
    bool _held = false;
    bool _running = false;
    // The running work. Keeps the coroutine's captures alive.
    Work _current;
    Task<void> _drain;
};

}
