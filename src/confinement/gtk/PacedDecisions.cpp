#include "confinement/gtk/PacedDecisions.hpp"

#include <glibmm/main.h>

namespace pagora {

namespace {

// The number of navigations that are allowed immediately. Each further one waits until an interval has passed since the
// previous one got its process.
constexpr std::size_t maxImmediate = 4;
constexpr std::int64_t second = 1'000'000;
constexpr unsigned millisecondsBetween = 500;
// More than the number of remote frames in a document of a book.
constexpr std::size_t maxWaiting = 32;
constexpr int maxUnpressed = 64;

}

bool PacedDecisions::use(WebKitPolicyDecision* decision, bool byUser)
{
    if (!byUser && ++_unpressed > maxUnpressed)
        return false;
    const std::int64_t now = g_get_monotonic_time();
    while (!_gone.empty() && now - _gone.front() > second)
        _gone.pop_front();
    if (_waiting.empty() && _gone.size() < maxImmediate) {
        webkit_policy_decision_use(decision);
        _gone.push_back(g_get_monotonic_time());
        return true;
    }
    if (_waiting.size() >= maxWaiting)
        return false;
    _waiting.push_back(GObjectPtr<WebKitPolicyDecision>::share(decision));
    if (!_timer.connected())
        useNextLater();
    return true;
}

void PacedDecisions::useNextLater()
{
    _timer = Glib::signal_timeout().connect(
        [this] {
            const auto decision = std::move(_waiting.front());
            _waiting.pop_front();
            webkit_policy_decision_use(decision.get());
            _gone.push_back(g_get_monotonic_time());
            if (!_waiting.empty())
                useNextLater();
            return false;
        },
        millisecondsBetween);
}

void PacedDecisions::ignoreAll()
{
    _timer.disconnect();
    _gone.clear();
    _unpressed = 0;
    for (auto& decision : std::exchange(_waiting, {}))
        webkit_policy_decision_ignore(decision.get());
}

}
