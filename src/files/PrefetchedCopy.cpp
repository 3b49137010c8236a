#include "files/PrefetchedCopy.hpp"

#include "base/FileDescriptor.hpp"
#include "base/Path.hpp"
#include "files/CopyIntoFolder.hpp"
#include "files/Files.hpp"

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pagora {

namespace {

constexpr mode_t fileMode = 0666;

bool isUnchanged(const struct stat& before, const struct stat& now)
{
    return before.st_dev == now.st_dev && before.st_ino == now.st_ino && before.st_size == now.st_size
        && before.st_mtim.tv_sec == now.st_mtim.tv_sec && before.st_mtim.tv_nsec == now.st_mtim.tv_nsec
        && before.st_ctim.tv_sec == now.st_ctim.tv_sec && before.st_ctim.tv_nsec == now.st_ctim.tv_nsec;
}

}

struct PrefetchedCopy::Parts {
    Parts(std::string from, std::string into)
        : source(std::move(from))
        , folder(std::move(into))
        , destination(appendingPathComponent(folder, lastPathComponent(source)))
        , file(::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, fileMode))
    {
    }

    const std::string source;
    const std::string folder;
    const std::string destination;
    struct stat before { };
    // A file without a name. The kernel removes it when the process ends.
    FileDescriptor file;

    bool copy();
    bool takeName() const;
};

bool PrefetchedCopy::Parts::copy()
{
    const auto from = openFile(source);
    if (!from || !file || fileExists(destination) || ::fstat(from.get(), &before) != 0
        || !copyBytes(from.get(), file.get()))
        return false;
    const std::array<timespec, 2> times { before.st_atim, before.st_mtim };
    ::futimens(file.get(), times.data());
    return ::fsync(file.get()) == 0;
}

bool PrefetchedCopy::Parts::takeName() const
{
    const auto self = "/proc/self/fd/" + std::to_string(file.get());
    return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, destination.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

PrefetchedCopy::PrefetchedCopy(std::unique_ptr<Parts> parts)
    : _parts(std::move(parts))
{
}

PrefetchedCopy::~PrefetchedCopy() = default;

std::unique_ptr<PrefetchedCopy> PrefetchedCopy::of(const std::string& source, const std::string& folder)
{
    auto parts = std::make_unique<Parts>(source, folder);
    return parts->copy() ? std::make_unique<PrefetchedCopy>(std::move(parts)) : nullptr;
}

std::optional<std::string> PrefetchedCopy::takeName()
{
    struct stat now { };
    if (::stat(_parts->source.c_str(), &now) == 0 && isUnchanged(_parts->before, now) && _parts->takeName())
        return lastPathComponent(_parts->destination);
    return copyIntoFolder(_parts->source, _parts->folder);
}

}
