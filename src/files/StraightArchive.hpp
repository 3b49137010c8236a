#pragma once

#include "base/Bounds.hpp"
#include "base/FileDescriptor.hpp"
#include "base/Result.hpp"
#include "files/ArchiveDirectory.hpp"

#include <cstdint>
#include <string>

typedef struct zip_source zip_source_t;

namespace pagora {

// A directory rewritten for the archive library: with the correct entry count, offsets from the start of the file, and
// no truncated extra field. Members before `start` are unchanged.
struct StraightDirectory {
    std::uint64_t start = 0;
    std::string bytes;
};

// Reads the directory as the classic command does: from the last end record, entry by entry. Ignores bytes before the
// archive, a wrong count and malformed extra fields. Thread-safe.
Result<StraightDirectory, ArchiveProblem> straightDirectory(
    int file, std::uint64_t archiveBytes, const ArchiveLimits& limits);

// Returns a source for the archive in an open file with its directory replaced; null when out of memory.
zip_source_t* straightSource(FileDescriptor file, StraightDirectory directory);

}
