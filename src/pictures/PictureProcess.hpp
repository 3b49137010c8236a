#pragma once

#include "pictures/PictureDecoder.hpp"

#include <optional>
#include <string>

namespace pagora {

// Limits for a picture format with shapes, references and filters (SVG).
struct PictureProcessLimits {
    unsigned seconds = 2;
    unsigned megabytes = 512;
};

// Decodes a picture with the helper program pagora-picture. Returns nullopt as `decodePicture` does, and if the picture
// exceeds the limits of processor time or memory. Blocks; not for the main thread.
std::optional<DecodedPicture> decodePictureInHelper(const std::string& bytes, Size enough);

// The main function of pagora-picture: reads the picture from standard input and writes its pixels to standard output.
// The arguments are the sides of `enough`. Returns the exit status.
int runPictureHelper(int count, char** arguments);

}
