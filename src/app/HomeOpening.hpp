#pragma once

#include "catalogue/PreparedRecords.hpp"
#include "running/Worker.hpp"
#include "store/HomeLock.hpp"
#include "store/UserDefaults.hpp"

#include <future>
#include <memory>
#include <optional>
#include <string>

namespace pagora {

// Locks the home folder, and opens the stored values and creates the records of the books in the background, because
// both take as long as starting the toolkit. Holds the lock until it is destroyed. Main thread only.
class HomeOpening {
public:
    // Starts immediately if no other process holds the lock.
    explicit HomeOpening(const std::string& folder);
    ~HomeOpening();
    HomeOpening(const HomeOpening&) = delete;
    HomeOpening& operator=(const HomeOpening&) = delete;

    // Waits up to `seconds` for a process that is exiting. Returns false if another process holds the lock.
    bool take(double seconds);

    // Waits until the stored values are open and returns them. Requires that `take` has returned true.
    UserDefaults& defaults();
    // Returns the records of the stored books. They may not be complete yet.
    std::shared_ptr<PreparedRecords> records() const { return _records; }

private:
    void begin();

    std::string _folder;
    HomeLock _lock;
    std::shared_ptr<PreparedRecords> _records = std::make_shared<PreparedRecords>();
    std::promise<void> _whenOpen;
    std::shared_future<void> _open = _whenOpen.get_future();
    std::unique_ptr<UserDefaults> _defaults;
    // Declared last, so the other members exist while it works.
    std::optional<Worker> _worker;
};

}
