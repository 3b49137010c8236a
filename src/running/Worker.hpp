#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace pagora {

// A background thread that runs its work items in order. The destructor finishes them. Thread-safe, but the work must
// not call `wait` or destroy the worker.
class Worker {
public:
    // Low lets other threads run first when the processors are busy.
    enum class Urgency : bool { Usual, Low };

    explicit Worker(Urgency urgency = Urgency::Usual);
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void perform(std::function<void()> work);
    // Waits until all queued work has run.
    void wait();

private:
    void run(Urgency urgency);

    std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<std::function<void()>> _queue;
    bool _busy = false;
    bool _closing = false;
    // Declared last, so the other members exist while the thread runs.
    std::jthread _thread;
};

}
