#pragma once

#include <cstdint>
#include <string_view>

namespace pagora {

// The picture formats that are decoded. What a picture is, its first bytes say, not its name.
struct ImageFormat {
    // The decoder's name; null for bytes of no known format.
    const char* name = nullptr;
    // Whether the decoder can make less than the full size in the first place.
    bool decodesReduced = false;
};

ImageFormat imageFormatOf(std::string_view bytes);

// Whether the bytes do not break off. Only asked of the formats whose decoder would make up what is missing, or make
// room for all that it is told of.
bool isComplete(const ImageFormat& format, std::string_view bytes);

// Whether a JPEG file keeps all its pixels until it is complete, whatever size is asked for.
bool isProgressiveJpeg(std::string_view bytes);

}
