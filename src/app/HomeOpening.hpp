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

// Takes the home folder, and opens the stored values and makes the records of the books in the background: both take as
// long as starting the toolkit. Holds the folder until it is destroyed. Main thread.
class HomeOpening {
public:
    // Begins at once where no other process has the folder.
    explicit HomeOpening(const std::string& folder);
    ~HomeOpening();
    HomeOpening(const HomeOpening&) = delete;
    HomeOpening& operator=(const HomeOpening&) = delete;

    // Waits up to `seconds` for a process that is exiting. False when another process has the folder.
    bool take(double seconds);

    // The stored values, after `take` returned true. Waits until they are open.
    UserDefaults& defaults();
    // The records of the stored books. They may still be in the making.
    std::shared_ptr<PreparedRecords> records() const { return _records; }

private:
    void begin();

    std::string _folder;
    HomeLock _lock;
    std::shared_ptr<PreparedRecords> _records = std::make_shared<PreparedRecords>();
    std::promise<void> _whenOpen;
    std::shared_future<void> _open = _whenOpen.get_future();
    std::unique_ptr<UserDefaults> _defaults;
    // Last, so that the other members exist while it works.
    std::optional<Worker> _worker;
};

}
