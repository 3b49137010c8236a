#include "confinement/gtk/PacedDecisions.hpp"

#include <glibmm/main.h>

namespace pagora {

namespace {

// So many steps go at once; each of the others waits for the one before it.
constexpr std::size_t atOnce = 4;
constexpr std::int64_t second = 1'000'000;
constexpr unsigned millisecondsBetween = 250;
// More than a document of a book has frames of servers.
constexpr std::size_t maxWaiting = 32;

}

bool PacedDecisions::use(WebKitPolicyDecision* decision)
{
    const std::int64_t now = g_get_monotonic_time();
    while (!_gone.empty() && now - _gone.front() > second)
        _gone.pop_front();
    if (_waiting.empty() && _gone.size() < atOnce) {
        _gone.push_back(now);
        webkit_policy_decision_use(decision);
        return true;
    }
    if (_waiting.size() >= maxWaiting)
        return false;
    _waiting.push_back(GObjectPtr<WebKitPolicyDecision>::share(decision));
    if (!_timer.connected())
        _timer = Glib::signal_timeout().connect(
            [this] {
                useNext();
                return !_waiting.empty();
            },
            millisecondsBetween);
    return true;
}

void PacedDecisions::useNext()
{
    const auto decision = std::move(_waiting.front());
    _waiting.pop_front();
    _gone.push_back(g_get_monotonic_time());
    webkit_policy_decision_use(decision.get());
}

void PacedDecisions::ignoreAll()
{
    _timer.disconnect();
    _gone.clear();
    for (auto& decision : std::exchange(_waiting, {}))
        webkit_policy_decision_ignore(decision.get());
}

}
