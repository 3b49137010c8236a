#pragma once

#include "pictures/Image.hpp"

#include <array>
#include <cstdint>
#include <string>

namespace pagora {

// Returns the colour of the board of a book without a cover, as red, green and blue from 0 to 1. It depends on title
// and author, and is dark enough for pale letters.
std::array<double, 3> boardColor(const std::string& title, const std::string& author);

// The colour of the letters on such a board.
inline constexpr std::array<double, 3> boardLetters { 0.988, 0.969, 0.925 };

// Draws a cover for a book without one: title and author on a board. `size` is in points; an empty author is omitted.
// Thread-safe.
Image drawnCover(const std::string& title, const std::string& author, Size size, int pixelsInPoint);

}
