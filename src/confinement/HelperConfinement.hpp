#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pagora {

// The access of a process that reads untrusted data.
struct HelperConfinement {
    // Folders in which the process may create, read, write and remove files. System programs and data and the folder of
    // its own program are readable; every other file is inaccessible unless it is passed as an open descriptor.
    std::vector<std::string> folders;
    // Memory that the process can allocate, and maximum size of a file that it can write.
    std::uint64_t memoryBytes = 0;
    std::uint64_t fileBytes = 0;
};

// The restrictions that are in effect.
struct HelperWalls {
    // File access; false if the kernel lacks Landlock.
    bool files = false;
    // System calls for network, other processes, mounts and the like.
    bool calls = false;
    bool limits = false;
};

// Confines this process and all that it starts, irrevocably. Called before other threads exist.
HelperWalls confineHelper(const HelperConfinement& confinement);

// Limits the processor time of this process from now on, in seconds. The kernel then kills it.
void allowProcessorTime(unsigned seconds);

}
