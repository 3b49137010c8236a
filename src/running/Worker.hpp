#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace pagora {

// A background thread that runs the work it is given, in order. The destructor finishes that work. Any thread; `wait`
// and the destructor not from its own work.
class Worker {
public:
    // Whether other threads go first when the processors are busy.
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
    // Last, so that the other members exist while the thread runs.
    std::jthread _thread;
};

}
