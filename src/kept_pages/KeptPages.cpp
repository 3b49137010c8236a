#include "kept_pages/KeptPages.hpp"

#include "base/Path.hpp"
#include "files/Files.hpp"

#include <glib.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace pagora {

namespace {

constexpr const char* extension = "page";

std::pair<std::int64_t, std::int64_t> timeOf(const std::string& path)
{
    struct stat file { };
    if (::lstat(path.c_str(), &file) != 0)
        return {};
    return { file.st_mtim.tv_sec, file.st_mtim.tv_nsec };
}

void removeOldest(const std::string& folder)
{
    std::vector<std::string> paths;
    for (const auto& name : folderEntries(folder).value_or(std::vector<std::string> {})) {
        if (pathExtension(name) == extension)
            paths.push_back(appendingPathComponent(folder, name));
    }
    if (paths.size() <= KeptPages::maxPages)
        return;
    std::vector<std::pair<std::pair<std::int64_t, std::int64_t>, std::string>> byAge;
    byAge.reserve(paths.size());
    for (auto& path : paths)
        byAge.emplace_back(timeOf(path), std::move(path));
    std::sort(byAge.begin(), byAge.end());
    for (std::size_t i = 0; i + KeptPages::maxPages < byAge.size(); ++i)
        removeItem(byAge[i].second);
}

}

// Numbers the requests to store or remove a picture, so that background work can detect that a later one was made.
struct KeptPages::Changes {
    std::uint64_t next(const std::string& file)
    {
        const std::scoped_lock lock(mutex);
        return latest[file] = ++count;
    }
    void forgetAll()
    {
        const std::scoped_lock lock(mutex);
        latest.clear();
    }
    bool isLatest(const std::string& file, std::uint64_t number)
    {
        const std::scoped_lock lock(mutex);
        const auto found = latest.find(file);
        return found != latest.end() && found->second == number;
    }

    std::mutex mutex;
    std::uint64_t count = 0;
    std::map<std::string, std::uint64_t> latest;
    // Held while a picture is stored.
    std::mutex storing;
};

KeptPages::KeptPages(std::string folder)
    : _folder(std::move(folder))
    , _changes(std::make_shared<Changes>())
{
}

std::string KeptPages::fileOf(const std::string& archive) const
{
    char* const name = g_compute_checksum_for_data(
        G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(archive.data()), archive.size());
    const auto path = appendingPathComponent(_folder, std::string(name) + "." + extension);
    g_free(name);
    return path;
}

std::optional<PagePicture> KeptPages::read(const PageKey& key) const
{
    if (!_changes)
        return std::nullopt;
    const auto bytes = readFile(fileOf(key.archive), maxPageFileBytes);
    return bytes ? decodedPage(*bytes, textOf(key)) : std::nullopt;
}

std::function<void()> KeptPages::storing(PageKey key, PagePicture picture)
{
    if (!_changes)
        return [] {};
    auto file = fileOf(key.archive);
    const auto number = _changes->next(file);
    return [changes = _changes, folder = _folder, file = std::move(file), number, key = std::move(key),
               picture = std::move(picture)] {
        const auto bytes = encodedPage(picture, textOf(key));
        const std::scoped_lock lock(changes->storing);
        if (!changes->isLatest(file, number))
            return;
        const bool isStored = bytes && createFolder(folder) && writeFile(file, *bytes);
        if (!isStored || !changes->isLatest(file, number))
            removeItem(file);
        removeUnfinishedFiles(folder);
        removeOldest(folder);
    };
}

void KeptPages::remove(const std::string& archive)
{
    if (!_changes)
        return;
    const auto file = fileOf(archive);
    _changes->next(file);
    removeItem(file);
}

void KeptPages::removeAll()
{
    if (!_changes)
        return;
    _changes->forgetAll();
    removeItem(_folder);
}

}
