#include "page/gtk/PageRecovery.hpp"

#include <glib.h>
#include <glibmm/main.h>

#include <utility>

namespace pagora {

namespace {

// In microseconds. If a page was shown for longer, the number of attempts is reset.
constexpr std::int64_t stableTime = 20'000'000;

}

void PageRecovery::performSoon(std::function<void()> work)
{
    _soon.disconnect();
    _soon = Glib::signal_idle().connect([work = std::move(work)] {
        // Copied, because the work may cancel itself.
        const auto own = work;
        own();
        return false;
    });
}

PageRecovery::Attempt PageRecovery::nextAttempt()
{
    const std::int64_t now = g_get_monotonic_time();
    bool allowsScripts = true;
    if (now - std::exchange(_lastAttempt, now) > stableTime)
        _attemptsLeft = maxAttempts;
    else if (_attemptsLeft < maxAttempts)
        allowsScripts = false;
    return { _attemptsLeft-- > 0, allowsScripts };
}

}
