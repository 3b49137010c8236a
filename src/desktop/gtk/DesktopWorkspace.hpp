#pragma once

#include "base/Surroundings.hpp"
#include "desktop/Workspace.hpp"
#include "files/MountedVolume.hpp"

#include <functional>
#include <string>
#include <utility>

namespace pagora {

// The workspace of a Linux desktop: Trash and default programs by GIO, the file manager by D-Bus. No call waits for
// another program.
class DesktopWorkspace : public Workspace {
public:
    using MountOf = std::function<FileMount(const std::string& path)>;
    explicit DesktopWorkspace(MountOf mount = mountOf, Surroundings where = surroundings())
        : _mountOf(std::move(mount))
        , _where(where)
    {
    }

    std::vector<std::optional<std::string>> copyFiles(
        const std::string& source, const std::string& destination, const std::vector<std::string>& names) override;
    std::unique_ptr<PrefetchedCopy> prefetchCopy(const std::string& file, const std::string& destination) override;
    bool canRecycleFile(const std::string& path) const override;
    bool recycleFiles(const std::string& source, const std::vector<std::string>& names) override;
    // Opens the enclosing folder if no file manager answers.
    void selectFile(const std::string& path) override;
    // Returns true if the path starts with the seven characters "/Volume", or if its mount is a volume.
    bool isOnMountedVolume(const std::string& path) override;
    // Returns whether this kind of URL may be opened. Pages can open only web URLs; a click by the user also opens
    // mail, phone and message URLs. URLs that other programs treat as commands or files are never opened.
    static bool mayOpen(const Url& url, RequestedBy requestedBy);
    // Ignores URLs that may not be opened or that no program handles.
    void openURL(const Url& url, RequestedBy requestedBy) override;
    void lookUp(const std::string& text) override;
    void noteNewRecentDocumentURL(const Url& url) override;

private:
    MountOf _mountOf;
    Surroundings _where;
};

}
