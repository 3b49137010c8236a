#include "files/StraightArchive.hpp"

#include "base/LittleEndian.hpp"
#include "base/Unicode.hpp"
#include "files/ArchiveDirectory.hpp"

#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace pagora {

namespace {

constexpr std::size_t endBytes = 22;
constexpr std::size_t headerBytes = 46;
constexpr std::size_t locatorBytes = 20;
constexpr std::size_t largeEndBytes = 56;
// Distance from the end of the file within which the classic command searches for the end record.
constexpr std::size_t searchedBytes = 66'000;
// The archive library searches the last bytes for end records. With this many zeros before the new record it finds only
// that one.
constexpr std::size_t gapBytes = std::size_t { 66 } << 10;
constexpr std::uint64_t largeNumber = 0xFFFFFFFF;
constexpr std::uint64_t maxCount = 0xFFFF;
constexpr std::uint64_t largeSizesField = 0x0001;
constexpr std::uint64_t encryptionField = 0x9901;
constexpr std::uint64_t encryptedMethod = 99;
constexpr std::uint64_t utf8Flag = 0x800;
// An unknown compression method: the library leaves out the member instead of rejecting the archive.
constexpr std::uint64_t unknownMethod = 0xFFFE;

struct EndRecord {
    // Offset of the record in the file.
    std::uint64_t place = 0;
    std::uint64_t directoryBytes = 0;
    std::uint64_t directoryOffset = 0;
};

std::optional<EndRecord> largeEndRecord(int file, std::uint64_t place)
{
    const auto bytes = bytesAt(file, place, largeEndBytes);
    if (bytes.size() < largeEndBytes || !bytes.starts_with("PK\6\6"))
        return std::nullopt;
    return EndRecord { place, littleEndian(bytes, 40, 8), littleEndian(bytes, 48, 8) };
}

std::optional<EndRecord> lastEndRecord(int file, std::uint64_t archiveBytes)
{
    const auto tailBytes = std::min<std::uint64_t>(archiveBytes, searchedBytes);
    const auto tailPlace = archiveBytes - tailBytes;
    const auto tail = bytesAt(file, tailPlace, tailBytes);
    if (tail.size() < endBytes)
        return std::nullopt;
    const auto at = tail.rfind("PK\5\6", tail.size() - endBytes);
    if (at == std::string::npos)
        return std::nullopt;
    const EndRecord plain { tailPlace + at, littleEndian(tail, at + 12, 4), littleEndian(tail, at + 16, 4) };
    if (at < locatorBytes || std::string_view(tail).substr(at - locatorBytes, 4) != "PK\6\7")
        return plain;
    if (const auto large = largeEndRecord(file, littleEndian(tail, at - locatorBytes + 8, 8)))
        return large;
    // Bytes before the archive shift the record, so it is read directly before its locator.
    const auto before = plain.place - locatorBytes;
    const auto large = before >= largeEndBytes ? largeEndRecord(file, before - largeEndBytes) : std::nullopt;
    return large ? large : plain;
}

// Returns the extra fields up to the first malformed one.
std::string_view wellFormed(std::string_view extra)
{
    std::size_t end = 0;
    while (extra.size() - end >= 4 && littleEndian(extra, end + 2, 2) <= extra.size() - end - 4)
        end += 4 + littleEndian(extra, end + 2, 2);
    return extra.substr(0, end);
}

std::optional<std::string_view> field(std::string_view extra, std::uint64_t kind)
{
    while (extra.size() >= 4) {
        const auto size = littleEndian(extra, 2, 2);
        if (littleEndian(extra, 0, 2) == kind)
            return extra.substr(4, size);
        extra.remove_prefix(4 + size);
    }
    return std::nullopt;
}

// Returns one directory entry with its extra fields. The member may be `shift` bytes after the stated offset.
std::string straightEntry(
    int file, std::string_view header, std::string_view name, std::string_view extra, std::uint64_t shift)
{
    std::string entry(header);
    const auto fields = wellFormed(extra);
    // Numbers that fit are written in 32 bits, because only such an offset can be shifted.
    auto large = field(fields, largeSizesField);
    for (const std::size_t at : { std::size_t { 24 }, std::size_t { 20 }, std::size_t { 42 } }) {
        if (littleEndian(entry, at, 4) != largeNumber || !large || large->size() < 8)
            continue;
        if (const auto number = littleEndian(*large, 0, 8); number < largeNumber)
            putLittleEndian(entry, at, number, 4);
        large->remove_prefix(8);
    }
    const auto place = littleEndian(entry, 42, 4);
    if (shift > 0 && place + shift < largeNumber && bytesAt(file, place + shift, 4) == "PK\3\4")
        putLittleEndian(entry, 42, place + shift, 4);
    const bool isLarge = littleEndian(entry, 20, 4) == largeNumber || littleEndian(entry, 24, 4) == largeNumber
        || littleEndian(entry, 42, 4) == largeNumber;
    std::string kept;
    for (auto rest = fields; !rest.empty(); rest.remove_prefix(4 + littleEndian(rest, 2, 2))) {
        if (isLarge || littleEndian(rest, 0, 2) != largeSizesField)
            kept.append(rest.substr(0, 4 + littleEndian(rest, 2, 2)));
    }
    if (littleEndian(entry, 10, 2) == encryptedMethod && !field(fields, encryptionField))
        putLittleEndian(entry, 10, unknownMethod, 2);
    // The library rejects an archive that marks such a name as UTF-8.
    if (!isUtf8(name) || std::any_of(name.begin(), name.end(), [](unsigned char c) { return c < ' '; }))
        putLittleEndian(entry, 8, littleEndian(entry, 8, 2) & ~utf8Flag, 2);
    putLittleEndian(entry, 30, kept.size(), 2);
    // No comment; disk number 0.
    putLittleEndian(entry, 32, 0, 4);
    return entry.append(name).append(kept);
}

// State of the zip_source callback.
struct Source {
    FileDescriptor file;
    StraightDirectory directory;
    std::uint64_t at = 0;
    zip_error_t error {};

    std::uint64_t size() const { return directory.start + directory.bytes.size(); }
    zip_int64_t read(char* into, zip_uint64_t count);
};

zip_int64_t Source::read(char* into, zip_uint64_t count)
{
    if (at >= size())
        return 0;
    if (at >= directory.start) {
        const auto from = at - directory.start;
        const auto taken = std::min<std::uint64_t>(count, directory.bytes.size() - from);
        std::copy_n(directory.bytes.data() + from, taken, into);
        at += taken;
        return static_cast<zip_int64_t>(taken);
    }
    const auto got
        = ::pread(file.get(), into, std::min<std::uint64_t>(count, directory.start - at), static_cast<off_t>(at));
    at += static_cast<std::uint64_t>(std::max<ssize_t>(got, 0));
    if (got < 0)
        zip_error_set(&error, ZIP_ER_READ, errno);
    return got;
}

zip_int64_t answer(void* context, void* data, zip_uint64_t count, zip_source_cmd_t command) noexcept
{
    auto& source = *static_cast<Source*>(context);
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_SUPPORTS, ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
            ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
    case ZIP_SOURCE_OPEN:
        source.at = 0;
        return 0;
    case ZIP_SOURCE_READ:
        return source.read(static_cast<char*>(data), count);
    case ZIP_SOURCE_CLOSE:
        return 0;
    case ZIP_SOURCE_SEEK: {
        const auto place = zip_source_seek_compute_offset(source.at, source.size(), data, count, &source.error);
        if (place < 0)
            return -1;
        source.at = static_cast<std::uint64_t>(place);
        return 0;
    }
    case ZIP_SOURCE_TELL:
        return static_cast<zip_int64_t>(source.at);
    case ZIP_SOURCE_STAT: {
        auto* info = static_cast<zip_stat_t*>(data);
        zip_stat_init(info);
        info->size = source.size();
        info->valid = ZIP_STAT_SIZE;
        return sizeof *info;
    }
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&source.error, data, count);
    case ZIP_SOURCE_FREE:
        zip_error_fini(&source.error);
        delete &source;
        return 0;
    default:
        zip_error_set(&source.error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

void addEnd(std::string& directory, std::uint64_t start, std::uint64_t count)
{
    const auto bytes = directory.size();
    directory.append(gapBytes, '\0');
    std::string end("PK\5\6");
    end.resize(endBytes, '\0');
    putLittleEndian(end, 8, count, 2);
    putLittleEndian(end, 10, count, 2);
    putLittleEndian(end, 12, bytes, 4);
    putLittleEndian(end, 16, start, 4);
    directory.append(end);
}

}

Result<StraightDirectory, ArchiveProblem> straightDirectory(
    int file, std::uint64_t archiveBytes, const ArchiveLimits& limits)
{
    const auto end = lastEndRecord(file, archiveBytes);
    if (!end || end->directoryBytes > end->place || end->directoryOffset > end->place - end->directoryBytes)
        return ArchiveProblem::Unreadable;
    const auto isEntryAt = [&](std::uint64_t place) { return bytesAt(file, place, 4) == "PK\1\2"; };
    // Bytes before the archive shift all offsets, unless the offsets are relative to the start of the file.
    const auto stated = end->directoryOffset + end->directoryBytes;
    auto shift = end->place - stated;
    if (!isEntryAt(end->directoryOffset + shift))
        shift = 0;
    StraightDirectory straight { end->directoryOffset + shift, {} };
    if (straight.start >= largeNumber || straight.start >= end->place || !isEntryAt(straight.start))
        return ArchiveProblem::Unreadable;
    const auto directory
        = bytesAt(file, straight.start, std::min(end->place - straight.start, limits.directoryBytes + 1));
    std::uint64_t count = 0;
    std::string_view rest(directory);
    while (rest.size() >= headerBytes && rest.starts_with("PK\1\2")) {
        const auto nameBytes = littleEndian(rest, 28, 2);
        const auto extraBytes = littleEndian(rest, 30, 2);
        const auto entryBytes = headerBytes + nameBytes + extraBytes + littleEndian(rest, 32, 2);
        if (entryBytes > rest.size())
            break;
        straight.bytes += straightEntry(file, rest.substr(0, headerBytes), rest.substr(headerBytes, nameBytes),
            rest.substr(headerBytes + nameBytes, extraBytes), shift);
        rest.remove_prefix(entryBytes);
        ++count;
    }
    if (directory.size() > limits.directoryBytes || count > std::min(limits.members, maxCount)
        || !areNamesApart(straight.bytes, limits))
        return ArchiveProblem::PastBounds;
    addEnd(straight.bytes, straight.start, count);
    return straight;
}

zip_source_t* straightSource(FileDescriptor file, StraightDirectory directory)
{
    auto source = std::make_unique<Source>(Source { std::move(file), std::move(directory) });
    zip_error_init(&source->error);
    auto* made = zip_source_function_create(&answer, source.get(), nullptr);
    if (made)
        // The library frees it.
        static_cast<void>(source.release());
    return made;
}

}
