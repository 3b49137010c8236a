#pragma once

#include <thread>
#include <vector>

namespace pagora::bench {

// Keeps all processors from falling asleep while it lives, by threads that run only where nothing else does. What a
// machine takes to wake them up, which a virtual one does at its host's leisure, is not the program's.
class AwakeProcessors {
public:
    AwakeProcessors();

private:
    std::vector<std::jthread> _threads;
};

}
