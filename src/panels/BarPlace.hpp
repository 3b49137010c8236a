#pragma once

#include "base/Geometry.hpp"

#include <vector>

namespace pagora {

// Text on a page: a box for each column, and its first and last lines. The origin is the upper left corner.
struct PlacedText {
    std::vector<Rect> boxes;
    Rect firstLine;
    Rect lastLine;
};

// Returns the position of a bar of that size in a view of that size: above the first line of the text or below its last
// line, and moved aside or away from text that it would cover. It covers text only if the view has no room elsewhere.
Rect placeOfBar(const PlacedText& text, const Size& bar, const Size& view);

}
