#pragma once

#include "base/Data.hpp"
#include "base/FileDescriptor.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace pagora {

// The scaled cover of a picture file with that size and checksum.
struct ScaledCover {
    std::uint64_t size = 0;
    std::uint64_t sum = 0;
    std::optional<Data> picture;
};

// A book's cover as JPEG bytes, scaled to the box of the library's covers. Missing when the file is no picture. The
// result of `ahead` is used when it is of the same file. Any thread.
std::optional<Data> coverPicture(const std::string& coverFile, const ScaledCover* ahead = nullptr);

// Prefetches the cover of an archive before its inspection, without writing files. Missing when it cannot be found
// directly or the file is large. Any thread.
std::optional<ScaledCover> prefetchCover(FileDescriptor archive);

// The program's own cover for books without one, as JPEG bytes.
std::optional<Data> defaultCoverPicture();

}
