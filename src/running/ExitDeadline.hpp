#pragma once

#include <chrono>

namespace pagora {

// Exits the process with status 0 after `time`, unless it has exited before. Threads that still wait are abandoned;
// call it when nothing is left to save.
void endProcessWithin(std::chrono::milliseconds time);

}
