#pragma once

#include "base/GObjectPtr.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <deque>
#include <sigc++/connection.h>

namespace pagora {

// Lets the steps of a page to servers go one after another. The engine starts a process for each step of the main
// frame, which holds the program up for a moment, and for longer when many are asked for at once. Steps of frames
// cannot be told from those. Main thread.
class PacedDecisions {
public:
    PacedDecisions() = default;
    ~PacedDecisions() { ignoreAll(); }
    PacedDecisions(const PacedDecisions&) = delete;
    PacedDecisions& operator=(const PacedDecisions&) = delete;

    // Lets the step go now, or, after several in a short time, in its turn. False when so many wait already, or so many
    // were made that nobody pressed, that the page must be a flood; the step is left to the caller then.
    bool use(WebKitPolicyDecision* decision, bool byUser);
    // The steps that wait are not made. Another document begins.
    void ignoreAll();

private:
    void useNextLater();

    std::deque<GObjectPtr<WebKitPolicyDecision>> _waiting;
    sigc::connection _timer;
    // When the last steps went, in microseconds on the monotonic clock.
    std::deque<std::int64_t> _gone;
    // Steps that nobody pressed, since the document began.
    int _unpressed = 0;
};

}
