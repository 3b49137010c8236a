#pragma once

#include "benches/data/MadeText.hpp"

#include <cstddef>
#include <string>

namespace pagora::bench {

// Returns a JPEG picture: gradients with noise, like a photographed cover. `quality` is from 1 to 100.
std::string madePicture(int width, int height, int quality, MadeText& random);

// Returns a cover of 900 by 1400 pixels in about 150 kB. There are only a few different ones, because creating one is
// slow.
const std::string& madeCover(std::size_t number);
// Returns the scaled cover that the library stores.
const std::string& madeSmallCover(std::size_t number);

// Returns a picture followed by noise up to exactly `size` bytes. Decoders ignore the noise.
std::string paddedPicture(std::size_t size, MadeText& random);

}
