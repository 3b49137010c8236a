#include "contents/gtk/ActionQueue.hpp"

#include <glibmm/main.h>

namespace pagora {

ActionQueue::~ActionQueue()
{
    _pending->actions.clear();
}

void ActionQueue::post(std::function<void()> action)
{
    _pending->actions.push_back(std::move(action));
    if (std::exchange(_pending->isScheduled, true))
        return;
    // Before the next event, which may depend on it.
    Glib::signal_idle().connect(
        [pending = _pending] {
            // Actions that these post wait for the next turn of the main loop.
            for (auto count = pending->actions.size(); count > 0 && !pending->actions.empty(); --count) {
                const auto next = std::move(pending->actions.front());
                pending->actions.pop_front();
                next();
            }
            pending->isScheduled = !pending->actions.empty();
            return pending->isScheduled;
        },
        Glib::PRIORITY_HIGH);
}

}
