#pragma once

#include "running/Worker.hpp"

#include <atomic>
#include <string>

namespace pagora {

// Whether the page processes are confined: they see the unpacked books and no other file of the user.
enum class Confinement : bool { None, Full };

// Tests whether the page engine can confine its processes on this system, by starting a trivial program in the same
// way. Many containers, chroots and AppArmor rules forbid it. Runs once, on a thread of its own; the destructor waits
// for it. Any thread, one at a time.
class ConfinementProbe {
public:
    struct Options {
        // The confining program: a path, or a name that is searched in PATH.
        std::string program = "bwrap";
        // Seconds after which the test counts as failed.
        double timeout = 5;
    };

    ConfinementProbe()
        : ConfinementProbe(Options {})
    {
    }
    explicit ConfinementProbe(Options options);

    bool isKnown() const { return _isKnown; }
    // Waits for the result, at most as long as the timeout.
    Confinement result();

private:
    Options _options;
    std::atomic<bool> _isKnown = false;
    Confinement _result = Confinement::None;
    // Last, so that the other members exist while its thread runs.
    Worker _worker;
};

// Allocates the environment variable that controls the engine's confinement, so that changing it later is safe beside
// other threads. Called before there are any.
void prepareConfinementSwitch();
// Whether the user has disabled the engine's confinement by that variable.
bool isConfinementSwitchedOff();

// Disables the confinement for contexts that are created during its lifetime.
class ConfinementSwitchedOff {
public:
    ConfinementSwitchedOff();
    ~ConfinementSwitchedOff();
    ConfinementSwitchedOff(const ConfinementSwitchedOff&) = delete;
    ConfinementSwitchedOff& operator=(const ConfinementSwitchedOff&) = delete;

private:
    std::string _before;
};

}
