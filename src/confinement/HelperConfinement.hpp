#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pagora {

// What is left to a process that reads what a stranger wrote.
struct HelperConfinement {
    // Folders in which it may make, read, write and remove files. Programs and data of the system, and the folder of
    // its own program, can be read too; every other file is out of reach, except for those that it is handed open.
    std::vector<std::string> folders;
    // Memory that it can get, and the size of a file that it can write.
    std::uint64_t memoryBytes = 0;
    std::uint64_t fileBytes = 0;
};

// Which of the walls stand.
struct HelperWalls {
    // Files: not where the kernel has no Landlock.
    bool files = false;
    // Network, other processes, mounts and the like.
    bool calls = false;
    bool limits = false;
};

// Confines this process, and all that it starts, for good. Call it before there are threads.
HelperWalls confineHelper(const HelperConfinement& confinement);

// The processor time that this process may take from now on, in seconds; the system ends it after that.
void allowProcessorTime(unsigned seconds);

}
