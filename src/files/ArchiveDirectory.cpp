#include "files/ArchiveDirectory.hpp"

#include "base/LittleEndian.hpp"
#include "base/Unicode.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <unistd.h>

namespace pagora {

std::string bytesAt(int file, std::uint64_t offset, std::size_t size)
{
    std::string bytes(size, '\0');
    std::size_t read = 0;
    while (read < size) {
        const auto got = ::pread(file, bytes.data() + read, size - read, static_cast<off_t>(offset + read));
        if (got <= 0)
            break;
        read += static_cast<std::size_t>(got);
    }
    bytes.resize(read);
    return bytes;
}

namespace {

constexpr std::size_t endBytes = 22;
constexpr std::size_t maxCommentBytes = 0xFFFF;
constexpr std::size_t locatorBytes = 20;
constexpr std::size_t largeEndBytes = 56;
constexpr std::size_t headerBytes = 46;
// This many names are harmless even if all collide.
constexpr std::uint64_t harmlessMembers = 5'000;
// The smallest size of the library's hash table.
constexpr std::size_t places = 4'096;

// A directory's position and size, as stated by an end record.
struct Claim {
    std::uint64_t members = 0;
    std::uint64_t bytes = 0;
    std::uint64_t offset = 0;
};

// Reads the end record at offset `at` of `tail`, the last bytes of the archive.
Claim claimAt(int file, std::string_view tail, std::size_t at)
{
    Claim claim { std::max(littleEndian(tail, at + 8, 2), littleEndian(tail, at + 10, 2)),
        littleEndian(tail, at + 12, 4), littleEndian(tail, at + 16, 4) };
    if (at < locatorBytes || tail.substr(at - locatorBytes, 4) != "PK\6\7")
        return claim;
    const auto large = bytesAt(file, littleEndian(tail, at - locatorBytes + 8, 8), largeEndBytes);
    if (large.size() < largeEndBytes || !large.starts_with("PK\6\6"))
        return claim;
    return { std::max(littleEndian(large, 24, 8), littleEndian(large, 32, 8)), littleEndian(large, 40, 8),
        littleEndian(large, 48, 8) };
}

// The hash function of the archive library; it stops at a NUL.
std::uint32_t placeOf(std::string_view name)
{
    std::uint32_t sum = 5381;
    for (const char c : name.substr(0, name.find('\0')))
        sum = sum * 33 + static_cast<unsigned char>(c);
    return sum % places;
}

}

bool areNamesApart(std::string_view directory, const ArchiveLimits& limits)
{
    std::array<std::uint64_t, places> counts {};
    // Entries for which the library generates the names.
    std::uint64_t others = 0;
    while (directory.size() >= headerBytes && directory.starts_with("PK\1\2")) {
        const auto nameBytes = littleEndian(directory, 28, 2);
        const auto extraBytes = littleEndian(directory, 30, 2);
        const auto rest = directory.substr(headerBytes);
        const auto name = rest.substr(0, nameBytes);
        const auto extra = rest.substr(name.size(), extraBytes);
        const bool isOther = !isUtf8(name) || extra.find("up") != std::string_view::npos;
        auto& count = isOther ? others : counts[placeOf(name)];
        if (++count > (isOther ? harmlessMembers : limits.alikeNames))
            return false;
        directory
            = rest.substr(std::min<std::size_t>(rest.size(), nameBytes + extraBytes + littleEndian(directory, 32, 2)));
    }
    return true;
}

bool isDirectoryWithin(int file, std::uint64_t archiveBytes, const ArchiveLimits& limits)
{
    const auto tailBytes = std::min<std::uint64_t>(archiveBytes, maxCommentBytes + endBytes + locatorBytes);
    const auto tail = bytesAt(file, archiveBytes - tailBytes, tailBytes);
    // The library tries every possible end record and reads its directory.
    std::uint64_t members = 0;
    std::uint64_t bytes = 0;
    for (auto at = tail.find("PK\5\6"); at != std::string::npos && at + endBytes <= tail.size();
         at = tail.find("PK\5\6", at + 1)) {
        const auto claim = claimAt(file, tail, at);
        // The library skips a directory that does not fit into the file.
        if (claim.bytes > archiveBytes || claim.offset > archiveBytes - claim.bytes)
            continue;
        members += std::min(claim.members, claim.bytes / headerBytes);
        bytes += claim.bytes;
        if (members > limits.members || bytes > limits.directoryBytes)
            return false;
        if (claim.members > harmlessMembers && !areNamesApart(bytesAt(file, claim.offset, claim.bytes), limits))
            return false;
    }
    return true;
}

}
