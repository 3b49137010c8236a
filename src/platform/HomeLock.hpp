#pragma once

#include "platform/FileDescriptor.hpp"

#include <string>

namespace pagora {

// Says that this program uses a folder, for as long as it lives and no longer: a sudden end gives the folder free.
class HomeLock {
public:
    // Makes the folder when it is missing.
    explicit HomeLock(const std::string& folder);

    // Waits up to that long for another program that is ending. False when the folder is another's; a folder that
    // cannot be locked is nobody's.
    bool take(double seconds);

private:
    FileDescriptor _file;
};

}
