#pragma once

#include <cstdint>
#include <functional>
#include <sigc++/connection.h>

namespace pagora {

// Decides how a page goes on whose engine has stopped. Main thread.
class PageRecovery {
public:
    ~PageRecovery() { _soon.disconnect(); }

    // A load that the reader asked for may be repeated anew.
    void reset() { _attemptsLeft = maxAttempts; }
    // Calls `work` from the main loop, unless it is called off first.
    void performSoon(std::function<void()> work);
    void callOff() { _soon.disconnect(); }

    struct Attempt {
        // False when the page has brought the engine down too often.
        bool isAllowed;
        // Whether the page runs scripts of its own: it has brought the engine down before.
        bool allowsScripts;
    };
    Attempt nextAttempt();

private:
    static constexpr int maxAttempts = 3;

    int _attemptsLeft = 0;
    // On the monotonic clock, in microseconds.
    std::int64_t _lastAttempt = 0;
    sigc::connection _soon;
};

}
