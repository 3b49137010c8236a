#pragma once

#include "base/Bounds.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pagora {

// Why there is no archive to extract from.
enum class ArchiveProblem { Unreadable, PastBounds };

// Whether the directory of the archive in an open file is within the limits. The archive library keeps all of it in
// memory and compares names with equal hashes one by one. A file that is no archive passes. Any thread.
bool isDirectoryWithin(int file, std::uint64_t archiveBytes, const ArchiveLimits& limits);

// Whether the names in a directory spread well enough over the library's hash table.
bool areNamesApart(std::string_view directory, const ArchiveLimits& limits);

// The bytes of an open file from a place on; fewer where the file ends.
std::string bytesAt(int file, std::uint64_t offset, std::size_t size);

}
