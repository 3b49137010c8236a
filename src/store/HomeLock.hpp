#pragma once

#include "base/FileDescriptor.hpp"

#include <string>

namespace pagora {

// Exclusive lock on a folder. The kernel releases it when the process exits or crashes.
class HomeLock {
public:
    // Creates the folder if it does not exist.
    explicit HomeLock(const std::string& folder);

    // Waits up to `seconds` for a process that is exiting. Returns false if another process holds the lock, and true if
    // the folder cannot be locked at all.
    bool take(double seconds);

private:
    FileDescriptor _file;
};

}
