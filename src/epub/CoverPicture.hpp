#pragma once

#include "base/Data.hpp"
#include "base/FileDescriptor.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace pagora {

// What becomes of a picture file of that size, whose bytes have that sum.
struct ScaledCover {
    std::uint64_t size = 0;
    std::uint64_t sum = 0;
    std::optional<Data> picture;
};

// A book's cover as JPEG bytes: the picture in the file, scaled into the box of the library's covers. Missing when the
// file is no picture. When the file is the one of `ahead`, nothing is left to do. Any thread.
std::optional<Data> coverPicture(const std::string& coverFile, const ScaledCover* ahead = nullptr);

// The cover of an archive, made ahead of its inspection and without a trace; missing when it cannot be found in the
// plainest way, or is a large file. Any thread.
std::optional<ScaledCover> coverAhead(FileDescriptor archive);

// The program's own cover for books without one, as JPEG bytes.
std::optional<Data> defaultCoverPicture();

}
