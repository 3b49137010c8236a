#pragma once

#include <cstdint>
#include <string_view>

namespace pagora {

// A picture format, detected from the first bytes.
struct ImageFormat {
    // The decoder's name; null for bytes of no known format.
    const char* name = nullptr;
    // Whether the decoder can decode at a reduced size.
    bool decodesReduced = false;
};

ImageFormat imageFormatOf(std::string_view bytes);

// Whether the file is complete. Only checked for formats whose decoders would fill in missing data or allocate for all
// that is declared.
bool isComplete(const ImageFormat& format, std::string_view bytes);

// Whether a JPEG file is progressive. Its decoder keeps all pixels in memory, whatever size is asked for.
bool isProgressiveJpeg(std::string_view bytes);

}
