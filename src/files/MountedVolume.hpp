#pragma once

#include <string>

namespace pagora {

// The mount that contains a file.
struct FileMount {
    // The mount point; empty if it is not known.
    std::string folder;
    // True if the files are on another machine.
    bool isRemote = false;
    // True if the desktop shows the mount as a volume, such as a USB stick.
    bool isVolume = false;
};

// Returns the mount of an existing file or folder, as reported by GIO. May block on a server. Thread-safe.
FileMount mountOf(const std::string& path);

// Returns whether the file is on a removable or network mount other than that of the home folder.
bool isMountedVolume(const FileMount& file, const FileMount& home);

}
