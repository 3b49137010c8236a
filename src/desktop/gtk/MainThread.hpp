#pragma once

#include <functional>
#include <memory>

namespace pagora {

// Runs `work` at once on the main thread; from any other thread it is sent there and runs soon, in the order of the
// calls. Any thread.
void onMainThread(std::function<void()> work);

// Names an object that work sent to the main thread needs: work that comes after the object is gone is dropped. The
// object belongs to the main thread and is not destroyed while another thread calls it.
class MainThreadOwner {
protected:
    MainThreadOwner() = default;
    ~MainThreadOwner() = default;
    MainThreadOwner(const MainThreadOwner&) = delete;
    MainThreadOwner& operator=(const MainThreadOwner&) = delete;

    // As the function of that name.
    void onMainThread(std::function<void()> work) const { pagora::onMainThread(whileAlive(std::move(work))); }

    // The work, which is dropped once the object is gone.
    std::function<void()> whileAlive(std::function<void()> work) const
    {
        return [alive = std::weak_ptr<const int>(_alive), work = std::move(work)] {
            if (!alive.expired())
                work();
        };
    }

private:
    std::shared_ptr<const int> _alive = std::make_shared<const int>(0);
};

}
