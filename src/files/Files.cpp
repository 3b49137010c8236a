#include "files/Files.hpp"

#include "base/FileDescriptor.hpp"
#include "base/Path.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <linux/fs.h>
#include <memory>
#include <random>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

namespace pagora {

namespace {

namespace fs = std::filesystem;

// The system reads a path only up to its first NUL byte.
bool isUsable(const std::string& path)
{
    return !path.empty() && path.find('\0') == std::string::npos;
}

// Separates the destination's name from a number in the name of a part file.
constexpr std::string_view partMark = ".part-";

bool isPartName(std::string_view name)
{
    const auto mark = name.rfind(partMark);
    return name.starts_with('.') && mark != std::string_view::npos && mark + partMark.size() < name.size()
        && name.find_first_not_of("0123456789", mark + partMark.size()) == std::string_view::npos;
}

// A hidden temporary file beside its destination. The destructor removes it unless it was renamed to the destination.
// It is locked while it is written, which distinguishes it from a file that a crash left behind.
class PartFile {
public:
    explicit PartFile(const std::string& destination)
        : _destination(destination)
        , _folder(deletingLastPathComponent(destination))
    {
        std::random_device random;
        const auto prefix = _folder + "/." + lastPathComponent(destination).substr(0, 200) + std::string(partMark);
        for (int attempt = 0; attempt < 100 && !_file; ++attempt) {
            _path = prefix + std::to_string(random());
            _file = FileDescriptor(::open(_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
            if (!_file && errno != EEXIST)
                break;
            if (_file && !isMine())
                _file = FileDescriptor();
        }
    }
    ~PartFile()
    {
        if (_file && !_named)
            ::unlink(_path.c_str());
    }
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    explicit operator bool() const { return static_cast<bool>(_file); }
    int get() const { return _file.get(); }

    bool replaceDestination()
    {
        _named = ::fsync(get()) == 0 && ::rename(_path.c_str(), _destination.c_str()) == 0;
        return _named && flushFolder();
    }

    bool takeFreeName()
    {
        if (::fsync(get()) != 0)
            return false;
        _named = ::renameat2(AT_FDCWD, _path.c_str(), AT_FDCWD, _destination.c_str(), RENAME_NOREPLACE) == 0;
        // Some file systems lack renameat2. A hard link does not replace an existing file either; the first name is
        // removed afterwards.
        if (!_named && (errno == EEXIST || ::link(_path.c_str(), _destination.c_str()) != 0))
            return false;
        return flushFolder();
    }

private:
    // Returns whether the file still exists and is locked, so no other process removes it as a leftover.
    bool isMine() const
    {
        struct stat info { };
        return (::flock(get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) && ::fstat(get(), &info) == 0
            && info.st_nlink > 0;
    }
    bool flushFolder()
    {
        const FileDescriptor folder(::open(_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder)
            ::fsync(folder.get());
        return true;
    }

    std::string _destination;
    std::string _folder;
    std::string _path;
    FileDescriptor _file;
    bool _named = false;
};

}

bool fileExists(const std::string& path)
{
    return isUsable(path) && ::access(path.c_str(), F_OK) == 0;
}

bool isFolder(const std::string& path)
{
    struct stat info { };
    return isUsable(path) && ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool isPlainFile(const std::string& path)
{
    struct stat info { };
    return isUsable(path) && ::lstat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

bool isReadable(const std::string& path)
{
    return isUsable(path) && ::access(path.c_str(), R_OK) == 0;
}

std::optional<std::vector<std::string>> folderEntries(const std::string& path)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(isUsable(path) ? ::opendir(path.c_str()) : nullptr, &::closedir);
    if (!folder)
        return std::nullopt;
    std::vector<std::string> names;
    errno = 0;
    while (const auto* entry = ::readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
        errno = 0;
    }
    return errno == 0 ? std::optional(std::move(names)) : std::nullopt;
}

Result<Done, std::string> createFolder(const std::string& path)
{
    auto code = std::make_error_code(std::errc::invalid_argument);
    if (isUsable(path)) {
        fs::create_directories(path, code);
        if (!code && !isFolder(path))
            code = std::make_error_code(std::errc::not_a_directory);
    }
    if (code)
        return code.message();
    return Done {};
}

bool removeItem(const std::string& path)
{
    std::error_code code;
    return isUsable(path) && fs::remove_all(path, code) > 0 && !code;
}

void makeEmptyFolder(const std::string& path)
{
    std::error_code code;
    const bool isThere = isUsable(path) && fs::symlink_status(path, code).type() == fs::file_type::directory;
    const auto entries = isThere ? folderEntries(path) : std::nullopt;
    if (!entries) {
        removeItem(path);
        createFolder(path);
        return;
    }
    // The folder is emptied and kept: on some file systems, creating the same folder many times a second becomes slower
    // each time.
    const auto folder = path + "/";
    for (const auto& name : *entries)
        removeItem(folder + name);
}

FileDescriptor openFile(const std::string& path)
{
    if (!isUsable(path))
        return FileDescriptor();
    // Without O_NONBLOCK, opening a named pipe would wait for its writer.
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat info { };
    if (!file || ::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode))
        return FileDescriptor();
    return file;
}

std::optional<std::string> readFile(const std::string& path, std::size_t limit)
{
    const auto file = openFile(path);
    struct stat info { };
    if (!file || ::fstat(file.get(), &info) != 0 || static_cast<std::uint64_t>(info.st_size) > limit)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(info.st_size) + 1, '\0');
    std::size_t size = 0;
    for (;;) {
        const auto got = ::read(file.get(), bytes.data() + size, bytes.size() - size);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        size += static_cast<std::size_t>(got);
        if (size > limit)
            return std::nullopt;
        if (got == 0)
            break;
        if (size == bytes.size())
            bytes.resize(bytes.size() * 2);
    }
    bytes.resize(size);
    return bytes;
}

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool writeFile(const std::string& path, const std::string& bytes)
{
    if (!isUsable(path))
        return false;
    PartFile part(path);
    return part && writeAll(part.get(), bytes) && part.replaceDestination();
}

void removeUnfinishedFiles(const std::string& folder)
{
    for (const auto& name : folderEntries(folder).value_or(std::vector<std::string> {})) {
        if (!isPartName(name))
            continue;
        const auto path = appendingPathComponent(folder, name);
        const FileDescriptor file(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
            ::unlink(path.c_str());
    }
}

bool copyBytes(int source, int destination)
{
    if (::ioctl(destination, FICLONE, source) == 0)
        return true;
    ssize_t copied = 0;
    bool any = false;
    while ((copied = ::copy_file_range(source, nullptr, destination, nullptr, 1u << 30, 0)) > 0)
        any = true;
    if (copied == 0 && any)
        return true;
    if (any)
        return false;
    // Fallback: not every pair of file systems supports copying in the kernel, and some report an empty file instead.
    const auto buffer = std::make_unique<std::array<char, 1 << 18>>();
    ssize_t got = 0;
    while ((got = ::read(source, buffer->data(), buffer->size())) > 0) {
        if (!writeAll(destination, { buffer->data(), static_cast<std::size_t>(got) }))
            return false;
    }
    return got == 0;
}

bool flushFolder(const std::string& path)
{
    const FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder && ::fsync(folder.get()) == 0;
}

bool copyFile(const std::string& source, const std::string& destination)
{
    const auto from = openFile(source);
    struct stat info { };
    if (!from || !isUsable(destination) || ::fstat(from.get(), &info) != 0)
        return false;
    struct stat existing { };
    if (::lstat(destination.c_str(), &existing) == 0) {
        return ::stat(destination.c_str(), &existing) == 0 && existing.st_dev == info.st_dev
            && existing.st_ino == info.st_ino;
    }
    PartFile part(destination);
    if (!part || !copyBytes(from.get(), part.get()))
        return false;
    const std::array<timespec, 2> times { info.st_atim, info.st_mtim };
    ::futimens(part.get(), times.data());
    return part.takeFreeName();
}

}
