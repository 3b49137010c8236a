#pragma once

#include "base/GObjectPtr.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <deque>
#include <sigc++/connection.h>

namespace pagora {

// Allows the navigations of a page to servers one after another. The engine starts a process for each navigation of the
// main frame, which blocks the program for a moment, and for longer if many are requested at once. Navigations of
// frames cannot be distinguished from those. Main thread only.
class PacedDecisions {
public:
    PacedDecisions() = default;
    ~PacedDecisions() { ignoreAll(); }
    PacedDecisions(const PacedDecisions&) = delete;
    PacedDecisions& operator=(const PacedDecisions&) = delete;

    // Allows the navigation now, or in its turn if there were several in a short time. Returns false if too many are
    // waiting, or if too many were made without the user: the page is then a flood, and the caller decides.
    bool use(WebKitPolicyDecision* decision, bool byUser);
    // Ignores the waiting navigations. Called when another document starts.
    void ignoreAll();

private:
    void useNextLater();

    std::deque<GObjectPtr<WebKitPolicyDecision>> _waiting;
    sigc::connection _timer;
    // The times of the last navigations, in microseconds on the monotonic clock.
    std::deque<std::int64_t> _gone;
    // Number of navigations without the user since the document started.
    int _unpressed = 0;
};

}
