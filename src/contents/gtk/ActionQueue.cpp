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
    // The high priority runs the actions before the next event, which may depend on them.
    Glib::signal_idle().connect(
        [pending = _pending] {
            // Actions that are posted by these wait for the next iteration of the main loop.
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
