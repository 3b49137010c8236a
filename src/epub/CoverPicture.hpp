#pragma once

#include "platform/Data.hpp"

#include <optional>
#include <string>

namespace pagora {

// The bytes of a picture file, and what becomes of them.
struct ScaledCover {
    std::string file;
    std::optional<Data> picture;
};

// A book's cover as JPEG bytes: the picture in the file, scaled into the box of the library's covers. Missing when the
// file is no picture. When the file holds the bytes of `ahead`, nothing is left to do. Any thread.
std::optional<Data> coverPicture(const std::string& coverFile, const ScaledCover* ahead = nullptr);

// The cover of the archive, made ahead of its inspection and without a trace; missing when it cannot be found in the
// plainest way, or is a large file. Any thread.
std::optional<ScaledCover> coverAhead(const std::string& archivePath);

// The program's own cover for books without one, as JPEG bytes.
std::optional<Data> defaultCoverPicture();

}
