#pragma once

#include "running/Worker.hpp"

#include <atomic>
#include <string>

namespace pagora {

// Whether the page processes are shut in: they see the unpacked books and no other file of the person's.
enum class Confinement : bool { None, Full };

// Finds out whether this system lets the page engine shut its processes in, by starting a program that does nothing in
// the same way. Many containers, plain changed roots and some rules of AppArmor forbid it. Looks once, on a thread of
// its own. Dropping it waits for the end of that. Any thread, one at a time.
class ConfinementProbe {
public:
    struct Options {
        // What shuts processes in: found on the path, unless it is a path itself.
        std::string program = "bwrap";
        // Seconds after which it is given up, and counts as not able to.
        double patience = 5;
    };

    ConfinementProbe()
        : ConfinementProbe(Options {})
    {
    }
    explicit ConfinementProbe(Options options);

    bool isKnown() const { return _isKnown; }
    // Waits until it is known, no longer than the patience.
    Confinement result();

private:
    Options _options;
    std::atomic<bool> _isKnown = false;
    Confinement _result = Confinement::None;
    // Last, so that its thread finds the others alive.
    Worker _worker;
};

// Prepares the variable of the environment that tells the engine whether to shut its processes in, so that setting it
// later is safe beside other threads. Before there are any.
void prepareConfinementSwitch();
// Whether the person has told the engine, by that variable, not to shut its processes in.
bool isConfinementSwitchedOff();

// Tells the engine not to shut in the processes of contexts that are made while this lives.
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
