#pragma once

#include <deque>
#include <functional>
#include <memory>

namespace pagora {

// Runs what a window's widgets ask for from the main loop, in order, outside of their own handling. Dropping the queue
// calls off what has not run, even from inside one of its actions. Main thread.
class ActionQueue {
public:
    ActionQueue() = default;
    ~ActionQueue();
    ActionQueue(const ActionQueue&) = delete;
    ActionQueue& operator=(const ActionQueue&) = delete;

    void post(std::function<void()> action);

private:
    struct Pending {
        std::deque<std::function<void()>> actions;
        bool isScheduled = false;
    };
    std::shared_ptr<Pending> _pending = std::make_shared<Pending>();
};

}
