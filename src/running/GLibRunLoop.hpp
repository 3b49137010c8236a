#pragma once

#include "running/RunLoop.hpp"

#include <condition_variable>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <thread>

namespace pagora {

class Worker;

// The run loop on GLib's default main context. The thread that creates it is the main thread. The destructor runs on
// the main thread: it waits for background work, serves its calls to the main thread, and drops posted work.
class GLibRunLoop : public RunLoop {
public:
    GLibRunLoop();
    ~GLibRunLoop() override;

    // Waits for background work as the destructor does. Posts and replies after it are dropped. Called at the end of
    // the program, while the objects that the work uses still exist.
    void finishBackgroundWork();

    [[nodiscard]] std::unique_ptr<Timer> performAfterDelay(double seconds, std::function<void()> work) override;
    Reply<void> performInBackground(std::function<void()> work) override;
    void performOnMainThread(const std::function<void()>& work) override;
    void postToMainThread(std::function<void()> work) override;
    bool isMainThread() const override;

private:
    // Work for the main thread. A blocking call is always served, because another thread waits for it.
    struct Item {
        enum class Kind { Posted, Call, Finished } kind;
        std::function<void()> work;
    };
    struct Job {
        std::unique_ptr<Worker> worker;
        std::optional<Reply<void>::Resolver> answer;
    };

    void push(Item item);
    std::optional<Item> take();
    void runQueue();
    void finish(std::list<Job>::iterator job);

    const std::thread::id _mainThread = std::this_thread::get_id();
    std::list<Job> _jobs;
    std::mutex _mutex;
    std::condition_variable _pushed;
    std::deque<Item> _queue;
    bool _closing = false;
    // Counts the wake-ups of the main thread. Other threads write to it and do not call GLib.
    int _wakeUps;
    unsigned _wakeUpSource;
};

}
