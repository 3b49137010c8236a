#pragma once

#include "platform/Data.hpp"

#include <optional>
#include <string>

namespace pagora {

// A book's cover as JPEG bytes: the picture in the file, scaled into the box of the library's covers. Missing when the
// file is no picture. Any thread.
std::optional<Data> coverPicture(const std::string& coverFile);

// The program's own cover for books without one, as JPEG bytes.
std::optional<Data> defaultCoverPicture();

}
