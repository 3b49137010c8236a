#pragma once

#include "base/Geometry.hpp"

#include <cstdint>

namespace pagora {

// Returns the CSS colours of a theme of the reflowable reader: 1 is the book's own colours, 2 white on black, 3 sepia.
// The fallbacks for other numbers differ: scripts get the colours of theme 3, the native background is white.
const char* cssColorForTheme(std::int32_t theme);
const char* cssBackgroundColorForTheme(std::int32_t theme);
Color backgroundColorForTheme(std::int32_t theme);

}
