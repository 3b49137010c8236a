#pragma once

#include "base/Url.hpp"
#include "desktop/RequestedBy.hpp"
#include "files/PrefetchedCopy.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Files and links on the desktop.
class Workspace {
public:
    virtual ~Workspace() = default;

    // Copies the named files from one folder into another. A copy gets its name when it is complete. An existing file
    // is never overwritten: the copy gets a free name, and an identical file is not copied again. Returns the name of
    // each copy; missing for one that failed. Any thread.
    virtual std::vector<std::optional<std::string>> copyFiles(
        const std::string& source, const std::string& destination, const std::vector<std::string>& names)
        = 0;
    // Copies the bytes of a file in advance, so that `copyFiles` only has to name the copy. Null when that is not
    // possible. Any thread.
    virtual std::unique_ptr<PrefetchedCopy> prefetchCopy(const std::string& file, const std::string& destination) = 0;
    // Whether the file can be moved to a Trash. Any thread.
    virtual bool canRecycleFile(const std::string& path) const = 0;
    // Moves the named files of a folder to the Trash. True when all went there. Any thread.
    virtual bool recycleFiles(const std::string& source, const std::vector<std::string>& names) = 0;
    // Shows the file or folder in the desktop's file manager. Main thread.
    virtual void selectFile(const std::string& path) = 0;
    // Whether the path is on a mounted volume: a file that is moved from there is only copied. Any thread.
    virtual bool isOnMountedVolume(const std::string& path) = 0;
    // Opens the URL in its default program, unless the requester may not start that kind. Main thread.
    virtual void openURL(const Url& url, RequestedBy requestedBy) = 0;
    // Looks the text up in the desktop's dictionary if one is installed, otherwise by a web search in the default
    // browser. Main thread.
    virtual void lookUp(const std::string& text) = 0;
    // Main thread.
    virtual void noteNewRecentDocumentURL(const Url& url) = 0;
};

}
