#include "files/SpareFiles.hpp"

#include "base/Path.hpp"
#include "files/Files.hpp"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

namespace pagora {

namespace {

// Maximum number of files that are kept of one book.
constexpr std::size_t maxFiles = 12;
constexpr std::size_t maxFolders = 6;
constexpr off_t maxFileBytes = 4 << 20;

}

void SpareFiles::makeEmptyFolder(const std::string& folder)
{
    struct stat info { };
    const bool isThere = ::lstat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
    const auto entries = isThere ? folderEntries(folder) : std::nullopt;
    if (!entries) {
        pagora::makeEmptyFolder(folder);
        return;
    }
    for (const auto& name : *entries)
        putAway(appendingPathComponent(folder, name));
}

void SpareFiles::putAway(const std::string& path)
{
    struct stat info { };
    if (::lstat(path.c_str(), &info) != 0)
        return;
    if (S_ISDIR(info.st_mode)) {
        for (const auto& name : folderEntries(path).value_or(std::vector<std::string> {}))
            putAway(appendingPathComponent(path, name));
        if (_folders.size() < maxFolders && folderEntries(path) == std::vector<std::string> {} && keep(path, _folders))
            return;
    } else if (S_ISREG(info.st_mode) && info.st_nlink == 1 && info.st_size <= maxFileBytes && _files.size() < maxFiles
        && keep(path, _files)) {
        return;
    }
    removeItem(path);
}

bool SpareFiles::keep(const std::string& path, std::vector<std::string>& spare)
{
    const auto kept = _path + "/" + std::to_string(_nextName++);
    if (::rename(path.c_str(), kept.c_str()) != 0
        && !(createFolder(_path) && ::rename(path.c_str(), kept.c_str()) == 0))
        return false;
    spare.push_back(kept);
    return true;
}

bool SpareFiles::take(std::vector<std::string>& spare, int folder, const char* name) const
{
    while (!spare.empty()) {
        const bool taken = ::renameat2(AT_FDCWD, spare.back().c_str(), folder, name, RENAME_NOREPLACE) == 0;
        if (!taken && errno == EEXIST)
            return false;
        // The kept folder may have been removed in the meantime.
        if (!taken)
            removeItem(spare.back());
        spare.pop_back();
        if (taken)
            return true;
    }
    return false;
}

FileDescriptor SpareFiles::takeFile(int folder, const char* name)
{
    if (!take(_files, folder, name))
        return FileDescriptor();
    return FileDescriptor(::openat(folder, name, O_WRONLY | O_NOFOLLOW | O_CLOEXEC));
}

bool SpareFiles::takeFolder(int folder, const char* name)
{
    return take(_folders, folder, name);
}

}
