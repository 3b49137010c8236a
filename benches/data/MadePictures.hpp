#pragma once

#include "benches/data/MadeText.hpp"

#include <cstddef>
#include <string>

namespace pagora::bench {

// JPEG pictures as bytes: soft colours under some grain, like a photographed cover. `quality` runs from 1 to 100.
std::string madePicture(int width, int height, int quality, MadeText& random);

// 900 by 1400 pixels in about 150 kB. There are only a few different ones, for making one takes long.
const std::string& madeCover(std::size_t number);
// What the library keeps of such a cover.
const std::string& madeSmallCover(std::size_t number);

// A picture that is followed by noise up to exactly `size` bytes; programs that show it do not mind.
std::string paddedPicture(std::size_t size, MadeText& random);

}
