#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pagora {

// The access of a process that reads untrusted data.
struct HelperConfinement {
    // Folders in which it may create, read, write and remove files. System programs and data and its own program's
    // folder are readable; every other file is inaccessible unless it is passed as an open descriptor.
    std::vector<std::string> folders;
    // Memory that it can allocate, and the size of a file that it can write.
    std::uint64_t memoryBytes = 0;
    std::uint64_t fileBytes = 0;
};

// Which restrictions are in effect.
struct HelperWalls {
    // File access; false where the kernel lacks Landlock.
    bool files = false;
    // Network, other processes, mounts and the like.
    bool calls = false;
    bool limits = false;
};

// Confines this process, and all that it starts, for good. Call it before there are threads.
HelperWalls confineHelper(const HelperConfinement& confinement);

// Limits the processor time of this process from now on, in seconds; the kernel kills it after that.
void allowProcessorTime(unsigned seconds);

}
