#pragma once

#include "pictures/ImageFormat.hpp"

#include <string_view>

namespace pagora {

// Returns the largest number of pixels that a picture's headers declare for the image, a frame or a tile. Decoders
// allocate memory for it before they report the size. A pixel with many samples is counted several times. Returns 0 for
// JPEG and SVG, whose decoders report the size first, and for truncated headers.
double declaredPixels(const ImageFormat& format, std::string_view bytes);

}
