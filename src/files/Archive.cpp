#include "files/Archive.hpp"

#include "base/Path.hpp"
#include "files/ArchiveDirectory.hpp"
#include "files/ContainedFolder.hpp"
#include "files/Files.hpp"
#include "files/StraightArchive.hpp"

#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <span>
#include <sys/stat.h>
#include <unordered_set>

namespace pagora {

namespace {

// Limit on wildcard matching: the bytes of the pattern times the bytes of all member names. Above it, wildcards are
// treated as plain characters.
constexpr std::size_t maxComparisons = std::size_t { 64 } << 20;
constexpr std::size_t bufferBytes = std::size_t { 256 } * 1024;

struct Member {
    zip_uint64_t index;
    std::string name;
    std::uint64_t size;
    // Destination without empty, "." and ".." components; empty for members that are not extracted.
    std::string path;
    bool isFolder;
};

std::vector<std::string> safeComponents(std::string_view name)
{
    auto components = split(name, '/');
    std::erase_if(components, [](const auto& part) { return part.empty() || part == "." || part == ".."; });
    return components;
}

// The requested members; all if no name is given.
class Selection {
public:
    Selection(const std::vector<std::string>& names, const std::vector<Member>& members)
        : _names(names.begin(), names.end())
    {
        std::size_t bytes = 0;
        for (const auto& member : members)
            bytes += member.name.size();
        std::copy_if(names.begin(), names.end(), std::back_inserter(_patterns), [&](const auto& n) {
            return hasWildcards(n) && n.size() <= maxComparisons / std::max<std::size_t>(bytes, 1);
        });
    }

    // A name with wildcard characters also matches a member of exactly that name.
    bool holds(const std::string& name) const
    {
        return _names.empty() || _names.contains(name)
            || std::any_of(
                _patterns.begin(), _patterns.end(), [&](const auto& p) { return matchesWildcards(name, p); });
    }

private:
    std::unordered_set<std::string> _names;
    std::vector<std::string> _patterns;
};

}

namespace {

// Reads one member. Bytes before damage are kept, and a wrong checksum is ignored.
class MemberReader {
public:
    MemberReader(zip_t* zip, zip_uint64_t index)
        : _zip(zip)
        , _index(index)
        , _file(zip_fopen_index(zip, index, 0), &zip_fclose)
    {
    }
    bool isOpen() const { return _file != nullptr; }

    // Returns the number of bytes read; 0 at the end.
    std::size_t read(std::span<char> buffer)
    {
        if (buffer.empty())
            return 0;
        if (_isDamaged)
            return readByByte(buffer);
        const auto got = zip_fread(_file.get(), buffer.data(), buffer.size());
        if (got < 0 && zip_error_code_zip(zip_file_get_error(_file.get())) != ZIP_ER_CRC && reopen(buffer))
            return readByByte(buffer);
        _read += static_cast<std::uint64_t>(std::max<zip_int64_t>(got, 0));
        return static_cast<std::size_t>(std::max<zip_int64_t>(got, 0));
    }

private:
    // On damage the library discards the output of the current call. Reopen the member, skip to the same position and
    // continue byte by byte.
    bool reopen(std::span<char> buffer)
    {
        _isDamaged = true;
        _file.reset(zip_fopen_index(_zip, _index, 0));
        for (std::uint64_t left = _read; _file && left > 0;) {
            const auto got = zip_fread(_file.get(), buffer.data(), std::min<std::uint64_t>(left, buffer.size()));
            if (got <= 0)
                return false;
            left -= static_cast<std::uint64_t>(got);
        }
        return _file != nullptr;
    }
    std::size_t readByByte(std::span<char> buffer)
    {
        std::size_t count = 0;
        while (_file && count < buffer.size() && zip_fread(_file.get(), buffer.data() + count, 1) == 1)
            ++count;
        return count;
    }

    zip_t* _zip;
    zip_uint64_t _index;
    std::unique_ptr<zip_file_t, decltype(&zip_fclose)> _file;
    std::uint64_t _read = 0;
    bool _isDamaged = false;
};

}

struct Archive::Handle {
    std::unique_ptr<zip_t, decltype(&zip_discard)> zip { nullptr, &zip_discard };
    std::vector<Member> members;
    // Remaining bytes that may be extracted.
    std::uint64_t room = std::numeric_limits<std::uint64_t>::max();
    bool isOutOfRoom = false;
    bool isDiskFull = false;

    bool readDirectory(const ArchiveLimits& limits, std::uint64_t archiveBytes);
    Member describe(zip_uint64_t index) const;
    std::optional<std::string> read(const Member& member) const;
    bool extract(
        const Member& member, ContainedFolder& destination, std::span<char> buffer, const std::stop_token& stop);
};

Member Archive::Handle::describe(zip_uint64_t index) const
{
    zip_stat_t info {};
    if (zip_stat_index(zip.get(), index, 0, &info) != 0 || !(info.valid & ZIP_STAT_NAME))
        return { index, {}, 0, {}, false };
    zip_uint8_t system = ZIP_OPSYS_UNIX;
    zip_uint32_t attributes = 0;
    zip_file_get_external_attributes(zip.get(), index, 0, &system, &attributes);
    Member member { index, info.name, info.valid & ZIP_STAT_SIZE ? info.size : 0, {}, false };
    if (system == ZIP_OPSYS_DOS && member.name.find('/') == std::string::npos)
        std::replace(member.name.begin(), member.name.end(), '\\', '/');
    member.isFolder = member.name.ends_with('/');

    const auto type = (attributes >> 16) & S_IFMT;
    const bool isPlain = type == 0 || type == S_IFREG || type == S_IFDIR;
    const bool isEncrypted = (info.valid & ZIP_STAT_ENCRYPTION_METHOD) && info.encryption_method != ZIP_EM_NONE;
    if (!S_ISLNK(type) && (isPlain || system == ZIP_OPSYS_DOS) && !isEncrypted)
        member.path = joined(safeComponents(member.name), "/");
    return member;
}

// Returns whether the disk, not the name, is the reason for the error.
bool isDiskError(int error)
{
    return error == ENOSPC || error == EDQUOT || error == EROFS || error == EACCES;
}

// Returns false if the archive exceeds a limit.
bool Archive::Handle::readDirectory(const ArchiveLimits& limits, std::uint64_t archiveBytes)
{
    const auto count = static_cast<std::uint64_t>(std::max<zip_int64_t>(zip_get_num_entries(zip.get(), 0), 0));
    if (count > limits.members)
        return false;
    members.reserve(count);
    std::uint64_t total = 0;
    for (zip_uint64_t i = 0; i < count; ++i) {
        auto member = describe(i);
        if (member.size > limits.memberBytes || member.name.size() > limits.pathBytes
            || (!member.path.empty() && split(member.path, '/').size() > limits.depth))
            return false;
        total += member.size;
        if (total > limits.totalBytes)
            return false;
        members.push_back(std::move(member));
    }
    return total <= limits.freeBytes || total / limits.ratio <= archiveBytes;
}

std::optional<std::string> Archive::Handle::read(const Member& member) const
{
    MemberReader reader(zip.get(), member.index);
    if (!reader.isOpen())
        return std::nullopt;
    std::string bytes(member.size, '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const auto got = reader.read({ bytes.data() + size, bytes.size() - size });
        if (got == 0)
            break;
        size += got;
    }
    bytes.resize(size);
    return bytes;
}

bool Archive::Handle::extract(
    const Member& member, ContainedFolder& destination, std::span<char> buffer, const std::stop_token& stop)
{
    auto folders = split(member.path, '/');
    const auto name = std::move(folders.back());
    folders.pop_back();
    // Replace an existing file even if the member cannot be read.
    const auto file = destination.makeFile(folders, name);
    if (!file) {
        isDiskFull = isDiskFull || isDiskError(errno);
        return true;
    }
    MemberReader reader(zip.get(), member.index);
    if (!reader.isOpen()) {
        destination.removeLastFile();
        return true;
    }
    std::uint64_t written = 0;
    while (!stop.stop_requested()) {
        // The limits were checked against the directory, so no member gets more bytes than it states.
        const auto got = reader.read(buffer.first(std::min<std::uint64_t>(buffer.size(), member.size - written)));
        if (got == 0 && destination.endFile(file, written))
            return true;
        isOutOfRoom = got > room;
        if (isOutOfRoom)
            break;
        written += got;
        room -= got;
        // If `got` is 0, `endFile` has failed.
        if (got == 0 || !writeAll(file.get(), { buffer.data(), got })) {
            isDiskFull = true;
            break;
        }
    }
    destination.removeLastFile();
    return !stop.stop_requested() && !isOutOfRoom;
}

Archive::Archive(std::unique_ptr<Handle> handle)
    : _handle(std::move(handle))
{
}
Archive::Archive(Archive&&) noexcept = default;
Archive& Archive::operator=(Archive&&) noexcept = default;
Archive::~Archive() = default;

Result<Archive, ArchiveProblem> Archive::open(const std::string& path, const ArchiveLimits& limits)
{
    return open(openFile(path), limits);
}

Result<Archive, ArchiveProblem> Archive::open(FileDescriptor file, const ArchiveLimits& limits)
{
    struct stat info { };
    if (!file || ::fstat(file.get(), &info) != 0)
        return ArchiveProblem::Unreadable;
    const auto bytes = static_cast<std::uint64_t>(info.st_size);
    if (!isDirectoryWithin(file.get(), bytes, limits))
        return ArchiveProblem::PastBounds;
    auto handle = std::make_unique<Handle>();
    // The library gets a duplicate, which it closes when it has opened the archive.
    if (FileDescriptor given(::fcntl(file.get(), F_DUPFD_CLOEXEC, 0)); given) {
        handle->zip.reset(zip_fdopen(given.get(), 0, nullptr));
        if (handle->zip)
            given.release();
    }
    if (!handle->zip) {
        auto directory = straightDirectory(file.get(), bytes, limits);
        if (!directory)
            return directory.reason();
        auto* source = straightSource(std::move(file), std::move(*directory));
        handle->zip.reset(source ? zip_open_from_source(source, ZIP_RDONLY, nullptr) : nullptr);
        if (!handle->zip && source)
            zip_source_free(source);
    }
    if (!handle->zip)
        return ArchiveProblem::Unreadable;
    if (!handle->readDirectory(limits, bytes))
        return ArchiveProblem::PastBounds;
    return Archive(std::move(handle));
}

std::vector<std::string> Archive::filePaths() const
{
    std::vector<std::string> paths;
    for (const auto& member : _handle->members) {
        if (!member.isFolder && !member.path.empty())
            paths.push_back(member.path);
    }
    return paths;
}

void Archive::setRoom(std::uint64_t bytes)
{
    _handle->room = bytes;
}

bool Archive::isOutOfRoom() const
{
    return _handle->isOutOfRoom;
}

bool Archive::isDiskFull() const
{
    return _handle->isDiskFull;
}

std::optional<std::string> Archive::read(const std::string& member, std::uint64_t limit) const
{
    for (const auto& each : _handle->members) {
        if (each.name == member && !each.isFolder && !each.path.empty())
            return each.size <= limit ? _handle->read(each) : std::nullopt;
    }
    return std::nullopt;
}

void Archive::extract(const std::vector<std::string>& members, const std::string& destination,
    const std::stop_token& stop, SpareFiles* spare)
{
    const Selection selection(members, _handle->members);
    ContainedFolder folder(destination, spare);
    // make_unique_for_overwrite leaves the buffer untouched, so only the pages that are used take memory.
    const auto buffer = std::make_unique_for_overwrite<char[]>(bufferBytes);
    for (const auto& member : _handle->members) {
        if (stop.stop_requested() || _handle->isOutOfRoom)
            return;
        if (member.path.empty() || !selection.holds(member.name))
            continue;
        if (member.isFolder)
            folder.makeFolders(split(member.path, '/'));
        else if (!_handle->extract(member, folder, { buffer.get(), bufferBytes }, stop))
            return;
    }
}

}
