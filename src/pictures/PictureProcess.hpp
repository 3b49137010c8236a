#pragma once

#include "pictures/PictureDecoder.hpp"

#include <optional>
#include <string>

namespace pagora {

// What a picture that is a program of its own kind, with shapes, references and filters, may take of the machine.
struct PictureProcessLimits {
    unsigned seconds = 2;
    unsigned megabytes = 512;
};

// Decodes a picture with the program pagora-picture, which lies beside this one or where that installs it. Missing as
// with `decodePicture`, and when the picture takes more processor time or memory than the limits. Waits for it: any
// thread but one that draws.
std::optional<DecodedPicture> decodePictureApart(const std::string& bytes, Size enough);

// The other side, which is all that pagora-picture does: the picture comes on the standard input, and its pixels go to
// the standard output. The arguments are the two sides of `enough`. Returns the program's status.
int decodePictureHere(int count, char** arguments);

}
