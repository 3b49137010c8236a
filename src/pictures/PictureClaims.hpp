#pragma once

#include "pictures/ImageFormat.hpp"

#include <string_view>

namespace pagora {

// The most pixels that a picture's headers claim for one piece of it: the whole, a frame of it, a tile. Decoders make
// room for a piece before they ask whether its size is welcome. A pixel of many samples counts as several. Of JPEG and
// SVG, whose decoders do ask, it is 0, and so it is where the headers break off.
double claimedPixels(const ImageFormat& format, std::string_view bytes);

}
