#pragma once

#include <thread>
#include <vector>

namespace pagora::bench {

// Keeps all processors busy with idle-priority threads as long as it exists. Otherwise the time that a virtual machine
// needs to wake up a processor would be measured.
class AwakeProcessors {
public:
    AwakeProcessors();

private:
    std::vector<std::jthread> _threads;
};

}
