#pragma once

#include <cstdint>
#include <functional>
#include <sigc++/connection.h>

namespace pagora {

// Decides whether a page is loaded again after its engine has stopped. Main thread only.
class PageRecovery {
public:
    ~PageRecovery() { _soon.disconnect(); }

    // Resets the number of attempts. Called for each load that the reader requests.
    void reset() { _attemptsLeft = maxAttempts; }
    // Calls `work` from the main loop, unless it is cancelled first.
    void performSoon(std::function<void()> work);
    void callOff() { _soon.disconnect(); }

    struct Attempt {
        // False if the page has crashed the engine too often.
        bool isAllowed;
        // True if the page may run its own scripts.
        bool allowsScripts;
    };
    Attempt nextAttempt();

private:
    static constexpr int maxAttempts = 3;

    int _attemptsLeft = 0;
    // In microseconds, on the monotonic clock.
    std::int64_t _lastAttempt = 0;
    sigc::connection _soon;
};

}
