#include "AwakeProcessors.hpp"

#include <pthread.h>
#include <sched.h>

namespace pagora::bench {

AwakeProcessors::AwakeProcessors()
{
    for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) {
        _threads.emplace_back([](const std::stop_token& stop) {
            const sched_param lowest {};
            if (pthread_setschedparam(pthread_self(), SCHED_IDLE, &lowest) != 0)
                return;
            while (!stop.stop_requested()) { }
        });
    }
}

}
