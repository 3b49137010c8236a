#pragma once

#include "benches/data/MadeText.hpp"

#include <cstddef>
#include <string>

namespace pagora::bench {

// JPEG pictures as bytes: gradients with noise, like a photographed cover. `quality` is from 1 to 100.
std::string madePicture(int width, int height, int quality, MadeText& random);

// 900 by 1400 pixels in about 150 kB. Only a few different ones, because making one is slow.
const std::string& madeCover(std::size_t number);
// The scaled cover that the library stores.
const std::string& madeSmallCover(std::size_t number);

// A picture followed by noise up to exactly `size` bytes, which decoders ignore.
std::string paddedPicture(std::size_t size, MadeText& random);

}
