#include "files/ContainedFolder.hpp"

#include "files/Files.hpp"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace pagora {

namespace {

constexpr mode_t folderMode = 0755;
constexpr mode_t fileMode = 0644;

}

bool ContainedFolder::makeFolders(const std::vector<std::string>& names)
{
    if (!_root) {
        if (createFolder(_path))
            _root = FileDescriptor(::open(_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!_root)
            return false;
    }
    if (_folder && names == _folders)
        return true;
    FileDescriptor folder(::fcntl(_root.get(), F_DUPFD_CLOEXEC, 0));
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    for (const auto& name : names) {
        FileDescriptor next(::openat(folder.get(), name.c_str(), flags));
        if (!next && errno == ENOENT) {
            if (!(_spare && _spare->takeFolder(folder.get(), name.c_str())))
                ::mkdirat(folder.get(), name.c_str(), folderMode);
            next = FileDescriptor(::openat(folder.get(), name.c_str(), flags));
        }
        if (!next)
            return false;
        folder = std::move(next);
    }
    _folder = std::move(folder);
    _folders = names;
    return true;
}

FileDescriptor ContainedFolder::makeFile(const std::vector<std::string>& folders, const std::string& name)
{
    if (!makeFolders(folders))
        return FileDescriptor();
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    FileDescriptor file = _spare ? _spare->takeFile(_folder.get(), name.c_str()) : FileDescriptor();
    if (!file)
        file = FileDescriptor(::openat(_folder.get(), name.c_str(), flags, fileMode));
    // Unlinking the name first replaces a symbolic link, and leaves other hard links to the same file unchanged.
    if (!file && errno == EEXIST && ::unlinkat(_folder.get(), name.c_str(), 0) == 0)
        file = FileDescriptor(::openat(_folder.get(), name.c_str(), flags, fileMode));
    _lastFile = file ? name : std::string();
    return file;
}

bool ContainedFolder::endFile(const FileDescriptor& file, std::uint64_t size) const
{
    return !_spare || ::ftruncate(file.get(), static_cast<off_t>(size)) == 0;
}

void ContainedFolder::removeLastFile()
{
    if (!_lastFile.empty())
        ::unlinkat(_folder.get(), _lastFile.c_str(), 0);
    _lastFile.clear();
}

}
