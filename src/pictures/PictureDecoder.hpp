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

// Decodes a picture in this process, at a reduced size that still covers `enough` if its format allows it. Returns
// nullopt if it cannot be decoded or exceeds one of `limits` even at a reduced size. Thread-safe.
std::optional<DecodedPicture> decodePicture(const std::string& bytes, Size enough, const PictureLimits& limits = {});

}
