#pragma once

#include "store/UserDefaults.hpp"

#include <string>
#include <vector>

namespace pagora {

// Archives that are being moved to the Trash. They are stored in the same flush that removes their books from the
// catalogue, so that the next start finishes the removal after a crash. Main thread.
class PendingRemovals {
public:
    explicit PendingRemovals(UserDefaults& defaults)
        : _defaults(defaults)
    {
    }

    std::vector<std::string> paths() const;
    // Both reach the disk with the next flush.
    void add(const std::vector<std::string>& paths);
    void remove(const std::vector<std::string>& paths);
    // The paths that are not on their way to the Trash, in their order.
    std::vector<std::string> without(std::vector<std::string> paths) const;

private:
    void store(const std::vector<std::string>& paths);

    UserDefaults& _defaults;
};

}
