#pragma once

#include <cstdint>
#include <string_view>

namespace pagora {

// A picture format, detected from the first bytes.
struct ImageFormat {
    // The decoder's name; null for unknown formats.
    const char* name = nullptr;
    // True if the decoder can decode at a reduced size.
    bool decodesReduced = false;
};

ImageFormat imageFormatOf(std::string_view bytes);

// Returns whether the file is complete. Checked only for formats whose decoders would fill in missing data or allocate
// memory for the declared size.
bool isComplete(const ImageFormat& format, std::string_view bytes);

// Returns whether a JPEG file is progressive. Its decoder keeps all pixels in memory, whatever size is requested.
bool isProgressiveJpeg(std::string_view bytes);

}
