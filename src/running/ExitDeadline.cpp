#include "running/ExitDeadline.hpp"

#include <csignal>
#include <cstdlib>
#include <sys/time.h>
#include <unistd.h>

namespace pagora {

namespace {

void endProcess(int)
{
    ::_exit(EXIT_SUCCESS);
}

}

void endProcessWithin(std::chrono::milliseconds time)
{
    struct sigaction action { };
    action.sa_handler = endProcess;
    ::sigaction(SIGALRM, &action, nullptr);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(time - seconds);
    const itimerval timer { {}, { seconds.count(), rest.count() } };
    ::setitimer(ITIMER_REAL, &timer, nullptr);
}

}
