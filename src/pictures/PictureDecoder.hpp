#pragma once

#include "base/Bounds.hpp"
#include "base/Geometry.hpp"

#include <memory>
#include <optional>
#include <string>

using GdkPixbuf = struct _GdkPixbuf;

namespace pagora {

// A picture's pixels, possibly at a reduced size, and its own size in pixels.
struct DecodedPicture {
    std::shared_ptr<GdkPixbuf> pixbuf;
    Size size;
};

// Decodes a picture in this process, at a reduced size that still covers `enough` where its format allows it. Missing
// when it does not decode or is past one of `limits` also at a reduced size. Any thread.
std::optional<DecodedPicture> decodePicture(const std::string& bytes, Size enough, const PictureLimits& limits = {});

}
