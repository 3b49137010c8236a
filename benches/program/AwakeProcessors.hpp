#pragma once

#include <thread>
#include <vector>

namespace pagora::bench {

// Keeps all processors busy with idle-priority threads during its lifetime. Otherwise the measurements would include
// the time that a virtual machine needs to wake up a processor.
class AwakeProcessors {
public:
    AwakeProcessors();

private:
    std::vector<std::jthread> _threads;
};

}
