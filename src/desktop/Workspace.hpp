#pragma once

#include "base/Url.hpp"
#include "desktop/RequestedBy.hpp"
#include "files/CopyAhead.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// What the desktop does with files and links on the program's behalf.
class Workspace {
public:
    virtual ~Workspace() = default;

    // Copies the named files from one folder into another. A copy is complete when it has its name, and another file is
    // never overwritten: where one of that name is there, the copy gets a free name beside it, and a file that is there
    // already, byte for byte, is not copied again. Returns the name of each copy, missing for one that failed. Any
    // thread.
    virtual std::vector<std::optional<std::string>> copyFiles(
        const std::string& source, const std::string& destination, const std::vector<std::string>& names)
        = 0;
    // Does what takes long of copying one file into a folder, for `copyFiles` to be spared when its time comes; null
    // when that is not possible. Any thread.
    virtual std::unique_ptr<CopyAhead> copyAhead(const std::string& file, const std::string& destination) = 0;
    // Whether there is a Trash for the file, and it may be moved there. Any thread.
    virtual bool canRecycleFile(const std::string& path) const = 0;
    // Moves the named files of a folder to the Trash. True when all went there. Any thread.
    virtual bool recycleFiles(const std::string& source, const std::vector<std::string>& names) = 0;
    // Shows the file or folder in the desktop's file manager. Main thread.
    virtual void selectFile(const std::string& path) = 0;
    // Whether the path is on a mounted volume: a file that is moved from there is only copied. Any thread.
    virtual bool isOnMountedVolume(const std::string& path) = 0;
    // Opens the URL in the default program for it, unless whoever asks may not have its kind started. Main thread.
    virtual void openURL(const Url& url, RequestedBy requestedBy) = 0;
    // Main thread.
    virtual void noteNewRecentDocumentURL(const Url& url) = 0;
};

}
