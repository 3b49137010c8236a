#pragma once

#include "base/Bounds.hpp"
#include "base/FileDescriptor.hpp"
#include "base/Result.hpp"
#include "files/ArchiveDirectory.hpp"

#include <cstdint>
#include <string>

typedef struct zip_source zip_source_t;

namespace pagora {

// The directory of an archive, written anew for the archive library: with the right count of entries, places that count
// from the start of the file, and no extra field that ends after its room. Members before `start` stay as they are.
struct StraightDirectory {
    std::uint64_t start = 0;
    std::string bytes;
};

// Reads the directory as the classic command does: from the last end record on, entry by entry, as long as entries
// follow. Bytes before the archive, a wrong count and malformed extra fields do not matter. Any thread.
Result<StraightDirectory, ArchiveProblem> straightDirectory(
    int file, std::uint64_t archiveBytes, const ArchiveLimits& limits);

// The archive in an open file with that directory in place of its own; null when there is no memory.
zip_source_t* straightSource(FileDescriptor file, StraightDirectory directory);

}
