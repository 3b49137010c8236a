#pragma once

#include <deque>
#include <functional>
#include <memory>

namespace pagora {

// Runs the actions of a window's widgets from the main loop, in order, after the widget's own event handling and before
// that of the next event. Destroying the queue drops pending actions, even during one of them. Main thread only.
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
