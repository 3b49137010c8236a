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
    // each copy, nullopt for a failed one. Thread-safe.
    virtual std::vector<std::optional<std::string>> copyFiles(
        const std::string& source, const std::string& destination, const std::vector<std::string>& names)
        = 0;
    // Copies the bytes of a file in advance, so that `copyFiles` only has to name the copy. Returns null if that is not
    // possible. Thread-safe.
    virtual std::unique_ptr<PrefetchedCopy> prefetchCopy(const std::string& file, const std::string& destination) = 0;
    // Returns whether the file can be moved to a Trash. Thread-safe.
    virtual bool canRecycleFile(const std::string& path) const = 0;
    // Moves the named files of a folder to the Trash. Returns true if all were moved. Thread-safe.
    virtual bool recycleFiles(const std::string& source, const std::vector<std::string>& names) = 0;
    // Shows the file or folder in the desktop's file manager. Main thread.
    virtual void selectFile(const std::string& path) = 0;
    // Returns whether the path is on a mounted volume: files dragged from there are copied, not moved. Thread-safe.
    virtual bool isOnMountedVolume(const std::string& path) = 0;
    // Opens the URL in its default program, if the requester may open that kind of URL. Main thread only.
    virtual void openURL(const Url& url, RequestedBy requestedBy) = 0;
    // Looks the text up in the desktop's dictionary if one is installed, otherwise by a web search in the default
    // browser. Main thread.
    virtual void lookUp(const std::string& text) = 0;
    // Adds the file to the desktop's recent documents. Main thread only.
    virtual void noteNewRecentDocumentURL(const Url& url) = 0;
};

}
