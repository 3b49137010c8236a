#pragma once

#include "base/Data.hpp"
#include "base/FileDescriptor.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace pagora {

// The scaled cover of a picture file with this size and checksum.
struct ScaledCover {
    std::uint64_t size = 0;
    std::uint64_t sum = 0;
    std::optional<Data> picture;
};

// Returns a book's cover as JPEG bytes, scaled to the size of the library's covers; nullopt if the file is not a
// picture. Uses the cover in `ahead` if it belongs to the same file. Thread-safe.
std::optional<Data> coverPicture(const std::string& coverFile, const ScaledCover* ahead = nullptr);

// Prefetches the cover of an archive before its inspection, without writing files. Returns nullopt if the cover cannot
// be found directly or the file is large. Thread-safe.
std::optional<ScaledCover> prefetchCover(FileDescriptor archive);

// Returns the program's own cover for books without one, as JPEG bytes.
std::optional<Data> defaultCoverPicture();

}
