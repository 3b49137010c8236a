#pragma once

#include <string>

namespace pagora {

// The mount that a file lies on.
struct FileMount {
    // The folder at which it is mounted; empty where that is not known.
    std::string folder;
    // Whether its files are on another machine.
    bool isRemote = false;
    // Whether the desktop shows it to the person as a volume, such as a USB stick.
    bool isVolume = false;
};

// The mount of a file or folder that is there, as GIO tells it. May wait for a server. Any thread.
FileMount mountOf(const std::string& path);

// Whether a file is on a removable or network mount other than that of the home folder.
bool isMountedVolume(const FileMount& file, const FileMount& home);

}
