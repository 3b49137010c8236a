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
    // Not at idle priority: a page that keeps drawing would hold back the user's keys.
    Glib::signal_idle().connect(
        [pending = _pending] {
            if (!pending->actions.empty()) {
                const auto next = std::move(pending->actions.front());
                pending->actions.pop_front();
                next();
            }
            pending->isScheduled = !pending->actions.empty();
            return pending->isScheduled;
        },
        Glib::PRIORITY_DEFAULT);
}

}
