#pragma once

#include "base/FileDescriptor.hpp"

#include <string>

namespace pagora {

// Exclusive lock on a folder. The kernel releases it when the process exits or crashes.
class HomeLock {
public:
    // Creates the folder when it is missing.
    explicit HomeLock(const std::string& folder);

    // Waits up to the timeout for a process that is exiting. Returns false when another process holds the lock, true
    // when the folder cannot be locked at all.
    bool take(double seconds);

private:
    FileDescriptor _file;
};

}
