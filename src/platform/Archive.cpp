#include "platform/Archive.hpp"

#include "platform/ArchiveDirectory.hpp"
#include "platform/ContainedFolder.hpp"
#include "platform/Files.hpp"
#include "platform/Path.hpp"

#include <zip.h>

#include <algorithm>
#include <memory>
#include <span>
#include <sys/stat.h>
#include <unordered_set>

namespace pagora {

namespace {

// Comparing a name with wildcards may take a step for each of its bytes and each byte of the members' names. Where that
// would be more steps than these, its wildcards are plain characters.
constexpr std::size_t mostComparisons = std::size_t { 64 } << 20;
constexpr std::size_t bufferBytes = std::size_t { 256 } * 1024;

struct Member {
    zip_uint64_t index;
    std::string name;
    std::uint64_t size;
    // Where it goes: without empty, "." and ".." components. Empty for what is not extracted.
    std::string path;
    bool isFolder;
};

std::vector<std::string> safeComponents(std::string_view name)
{
    auto components = split(name, '/');
    std::erase_if(components, [](const auto& part) { return part.empty() || part == "." || part == ".."; });
    return components;
}

// Which members are asked for; all when no name is given.
class Selection {
public:
    Selection(const std::vector<std::string>& names, const std::vector<Member>& members)
        : _names(names.begin(), names.end())
    {
        std::size_t bytes = 0;
        for (const auto& member : members)
            bytes += member.name.size();
        std::copy_if(names.begin(), names.end(), std::back_inserter(_patterns), [&](const auto& n) {
            return hasWildcards(n) && n.size() <= mostComparisons / std::max<std::size_t>(bytes, 1);
        });
    }

    // A name that holds a wildcard character and is a member's very name asks for that member too.
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

struct Archive::Handle {
    std::unique_ptr<zip_t, decltype(&zip_discard)> zip { nullptr, &zip_discard };
    std::vector<Member> members;

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

// False when the archive breaks a bound.
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
    const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> source(
        zip_fopen_index(zip.get(), member.index, 0), &zip_fclose);
    if (!source)
        return std::nullopt;
    // One byte more shows a member that holds more than the directory says, and makes the library check the sum.
    std::string bytes(member.size + 1, '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const auto got = zip_fread(source.get(), bytes.data() + size, bytes.size() - size);
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        size += static_cast<std::size_t>(got);
    }
    if (size > member.size)
        return std::nullopt;
    bytes.resize(size);
    return bytes;
}

bool Archive::Handle::extract(
    const Member& member, ContainedFolder& destination, std::span<char> buffer, const std::stop_token& stop)
{
    auto folders = split(member.path, '/');
    const auto name = std::move(folders.back());
    folders.pop_back();
    // Frees the name also for a member that cannot be read.
    const auto file = destination.makeFile(folders, name);
    if (!file)
        return true;
    const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> source(
        zip_fopen_index(zip.get(), member.index, 0), &zip_fclose);
    if (!source) {
        destination.removeLastFile();
        return true;
    }
    std::uint64_t written = 0;
    for (;;) {
        const bool stopped = stop.stop_requested();
        const auto got = stopped ? -1 : zip_fread(source.get(), buffer.data(), buffer.size());
        if (got == 0 && destination.endFile(file, written))
            return true;
        written += got > 0 ? static_cast<std::uint64_t>(got) : 0;
        if (got <= 0 || written > member.size
            || !writeAll(file.get(), { buffer.data(), static_cast<std::size_t>(got) })) {
            destination.removeLastFile();
            return !stopped;
        }
    }
}

Archive::Archive(std::unique_ptr<Handle> handle)
    : _handle(std::move(handle))
{
}
Archive::Archive(Archive&&) noexcept = default;
Archive& Archive::operator=(Archive&&) noexcept = default;
Archive::~Archive() = default;

std::optional<Archive> Archive::open(const std::string& path, const ArchiveLimits& limits, ArchiveProblem* problem)
{
    if (problem)
        *problem = ArchiveProblem::Unreadable;
    auto file = openFile(path);
    struct stat info { };
    if (!file || ::fstat(file.get(), &info) != 0)
        return std::nullopt;
    const auto bytes = static_cast<std::uint64_t>(info.st_size);
    const auto pastBounds = [&] {
        if (problem)
            *problem = ArchiveProblem::PastBounds;
        return std::nullopt;
    };
    if (!isDirectoryWithin(file.get(), bytes, limits))
        return pastBounds();
    auto handle = std::make_unique<Handle>();
    handle->zip.reset(zip_fdopen(file.get(), 0, nullptr));
    if (!handle->zip)
        return std::nullopt;
    // The library works on a duplicate, and closes the original itself.
    file.release();
    if (!handle->readDirectory(limits, bytes))
        return pastBounds();
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
    // Only what is read into it takes memory.
    const auto buffer = std::make_unique_for_overwrite<char[]>(bufferBytes);
    for (const auto& member : _handle->members) {
        if (stop.stop_requested())
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
