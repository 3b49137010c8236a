#pragma once

#include "running/Worker.hpp"

#include <atomic>
#include <string>

namespace pagora {

// Whether the page processes are confined to the unpacked books and cannot access other files of the user.
enum class Confinement : bool { None, Full };

// Tests whether the page engine can confine its processes on this system, by starting a trivial program in the same
// way. Many containers, chroots and AppArmor rules forbid it. Runs once on its own thread; the destructor waits for it.
// Use each object on one thread at a time.
class ConfinementProbe {
public:
    struct Options {
        // The confining program: a path, or a name that is searched in PATH.
        std::string program = "bwrap";
        // Timeout of the test in seconds.
        double timeout = 5;
    };

    ConfinementProbe()
        : ConfinementProbe(Options {})
    {
    }
    explicit ConfinementProbe(Options options);

    bool isKnown() const { return _isKnown; }
    // Waits for the result, at most until the timeout.
    Confinement result();

private:
    Options _options;
    std::atomic<bool> _isKnown = false;
    Confinement _result = Confinement::None;
    // Declared last, so the other members exist while its thread runs.
    Worker _worker;
};

// Allocates the environment variable that controls the engine's confinement, so that later changes are safe while other
// threads run. Called before other threads exist.
void prepareConfinementSwitch();
// Returns whether the user has disabled the engine's confinement with that variable.
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
