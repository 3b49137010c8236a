#pragma once

#include "store/UserDefaults.hpp"

#include <string>
#include <vector>

namespace pagora {

// Archives that are being moved to the Trash. They are stored in the same flush that removes their books from the
// catalogue, so that the next start finishes the removal after a crash. Main thread only.
class PendingRemovals {
public:
    explicit PendingRemovals(UserDefaults& defaults)
        : _defaults(defaults)
    {
    }

    std::vector<std::string> paths() const;
    // The changes are stored with the next flush.
    void add(const std::vector<std::string>& paths);
    void remove(const std::vector<std::string>& paths);
    // Returns the paths that are not being moved to the Trash, in the same order.
    std::vector<std::string> without(std::vector<std::string> paths) const;

private:
    void store(const std::vector<std::string>& paths);

    UserDefaults& _defaults;
};

}
