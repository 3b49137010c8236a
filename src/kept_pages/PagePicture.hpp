#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// The pixels of a page as it was drawn.
struct PagePicture {
    // In device pixels; `scale` is the number of device pixels per pixel of the toolkit.
    int width = 0;
    int height = 0;
    int scale = 1;
    // The conditions for the drawing besides the book, the place in it and the display options, such as the engine's
    // version.
    std::string conditions;
    // The colour around the page in CSS syntax; empty if it is not known.
    std::string paper;
    // Four bytes per pixel in the toolkit's own order, in rows without gaps.
    std::string pixels;

    bool operator==(const PagePicture&) const = default;
};

// The maximum size of the file of one picture in bytes, and the maximum number of its pixels.
constexpr std::size_t maxPageFileBytes = 300'000;
constexpr std::size_t maxPagePixels = 6'000'000;

// Encodes the picture and its key with lossless compression. Returns nullopt if it would exceed one of the limits.
// Thread-safe.
std::optional<std::string> encodedPage(const PagePicture& picture, std::string_view key);

// Decodes a file's bytes. Returns nullopt if they are damaged or were written with another key. The bytes are not
// trusted: memory is limited by the constants above. Thread-safe.
std::optional<PagePicture> decodedPage(std::string_view bytes, std::string_view key);

}
