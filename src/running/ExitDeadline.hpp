#pragma once

#include <chrono>

namespace pagora {

// Ends this process, with success, unless it has come to its end by itself in that time. For a process that has nothing
// left to lose: whatever its threads wait for is left as it is.
void endProcessWithin(std::chrono::milliseconds time);

}
