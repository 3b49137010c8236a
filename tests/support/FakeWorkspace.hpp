#pragma once

#include "base/Path.hpp"
#include "desktop/Workspace.hpp"
#include "files/CopyIntoFolder.hpp"

#include <cstdio>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace pagora::test {

// A workspace that copies files and records all other calls.
class FakeWorkspace : public Workspace {
public:
    std::vector<std::optional<std::string>> copyFiles(
        const std::string& source, const std::string& destination, const std::vector<std::string>& names) override
    {
        const std::lock_guard lock(_mutex);
        std::vector<std::optional<std::string>> copies;
        for (const auto& name : names) {
            copied.push_back(appendingPathComponent(source, name));
            copies.push_back(failing.contains(name) ? std::nullopt : copyIntoFolder(copied.back(), destination));
        }
        return copies;
    }
    std::unique_ptr<PrefetchedCopy> prefetchCopy(const std::string& file, const std::string& destination) override
    {
        return failing.contains(lastPathComponent(file)) ? nullptr : PrefetchedCopy::of(file, destination);
    }
    bool canRecycleFile(const std::string& path) const override { return !withoutTrash.contains(path); }
    bool recycleFiles(const std::string& source, const std::vector<std::string>& names) override
    {
        const std::lock_guard lock(_mutex);
        bool moved = !trashFails;
        for (const auto& name : names) {
            recycled.push_back(appendingPathComponent(source, name));
            if (!trash.empty())
                moved = std::rename(recycled.back().c_str(), appendingPathComponent(trash, name).c_str()) == 0 && moved;
        }
        return moved;
    }
    void selectFile(const std::string& path) override { revealed.push_back(path); }
    bool isOnMountedVolume(const std::string& path) override { return path.starts_with(volume); }
    void openURL(const Url& url, RequestedBy) override { opened.push_back(url); }
    void lookUp(const std::string& text) override { lookedUp.push_back(text); }
    void noteNewRecentDocumentURL(const Url& url) override { recent.push_back(url); }

    // Names of files whose copies fail.
    std::set<std::string> failing;
    // The prefix of paths on a mounted volume.
    std::string volume = "/Volume";
    // Paths of files without a Trash.
    std::set<std::string> withoutTrash;
    // The folder to which recycled files are moved; if empty, they are not moved.
    std::string trash;
    // True if moving to the Trash fails.
    bool trashFails = false;
    // Paths of the requested files, in order.
    std::vector<std::string> copied;
    std::vector<std::string> recycled;
    std::vector<std::string> revealed;
    std::vector<Url> opened;
    std::vector<std::string> lookedUp;
    std::vector<Url> recent;

private:
    std::mutex _mutex;
};

}
