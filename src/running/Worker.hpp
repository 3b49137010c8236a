#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace pagora {

// The one background helper: a thread that runs what it is given, in order. Dropping it finishes what was given. Any
// thread, but `wait` and dropping it not from its own work.
class Worker {
public:
    // Whether its work waits where the processors are busy.
    enum class Urgency : bool { Usual, Low };

    explicit Worker(Urgency urgency = Urgency::Usual);
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void perform(std::function<void()> work);
    // Returns when everything that was given has run.
    void wait();

private:
    void run(Urgency urgency);

    std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<std::function<void()>> _queue;
    bool _busy = false;
    bool _closing = false;
    // Last, so that the thread finds all the others alive.
    std::jthread _thread;
};

}
