#pragma once

#include "base/Bounds.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pagora {

// The reason why an archive cannot be used.
enum class ArchiveProblem { Unreadable, PastBounds };

// Returns whether the directory of the archive in an open file is within the limits. The archive library keeps the
// whole directory in memory and compares names with equal hashes one by one. Returns true for a file that is not an
// archive. Thread-safe.
bool isDirectoryWithin(int file, std::uint64_t archiveBytes, const ArchiveLimits& limits);

// Returns whether the names in a directory are spread well enough over the library's hash table.
bool areNamesApart(std::string_view directory, const ArchiveLimits& limits);

// Reads `size` bytes of an open file at `offset`; fewer at the end of the file.
std::string bytesAt(int file, std::uint64_t offset, std::size_t size);

}
