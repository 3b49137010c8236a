#include "page/gtk/PageRecovery.hpp"

#include <glib.h>
#include <glibmm/main.h>

#include <utility>

namespace pagora {

namespace {

// In microseconds. A page that was shown for longer gets all attempts again.
constexpr std::int64_t steadyTime = 20'000'000;

}

void PageRecovery::performSoon(std::function<void()> work)
{
    _soon.disconnect();
    _soon = Glib::signal_idle().connect([work = std::move(work)] {
        // The work may cancel itself.
        const auto own = work;
        own();
        return false;
    });
}

PageRecovery::Attempt PageRecovery::nextAttempt()
{
    const std::int64_t now = g_get_monotonic_time();
    bool allowsScripts = true;
    if (now - std::exchange(_lastAttempt, now) > steadyTime)
        _attemptsLeft = maxAttempts;
    else if (_attemptsLeft < maxAttempts)
        allowsScripts = false;
    return { _attemptsLeft-- > 0, allowsScripts };
}

}
