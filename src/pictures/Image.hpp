#pragma once

#include "base/Bounds.hpp"
#include "base/Geometry.hpp"
#include "pictures/PictureDecoder.hpp"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace pagora {

// An immutable decoded picture; copies share the pixels. Thread-safe.
class Image {
public:
    // Decodes a JPEG, PNG, GIF, WebP, SVG, BMP, TIFF or AVIF picture. Returns nullopt if it cannot be decoded or
    // exceeds one of `limits` even at a reduced size. `size()` is the picture's own size, also if it was decoded at a
    // reduced size that still covers `enough`. External references are not loaded.
    static std::optional<Image> fromBytes(const std::string& bytes, Size enough = {}, const PictureLimits& limits = {});
    // Does the same, always in this process. `fromBytes` decodes SVG, whose cost is unbounded, in a helper process.
    static std::optional<Image> fromBytesInProcess(
        const std::string& bytes, Size enough = {}, const PictureLimits& limits = {});

    // The size in pixels, before any reduction at decoding.
    Size size() const { return _size; }

    // Scales the picture by the smaller ratio of `target` to its size, in single precision; each side is truncated to
    // whole pixels. The size is `target` itself if the sizes are equal. Returns nullopt if a side becomes 0.
    std::optional<Image> imageByScalingProportionallyToSize(Size target) const;

    // Encodes the picture as baseline JPEG, with transparent parts on white. `quality` is from 0 to 1.
    std::optional<std::string> jpegData(double quality) const;

    // The pixels as decoded, possibly at a reduced size.
    GdkPixbuf* pixbuf() const { return _pixbuf.get(); }

    // `size` is the picture's own size.
    Image(std::shared_ptr<GdkPixbuf> pixbuf, Size size)
        : _pixbuf(std::move(pixbuf))
        , _size(size)
    {
    }

private:
    static std::optional<Image> of(std::optional<DecodedPicture> picture);

    std::shared_ptr<GdkPixbuf> _pixbuf;
    Size _size;
};

}
