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

// Where a bar of that size lies in a view of that size: above the text's first line or below its last, and beside or
// away from the text where it would cover it there. It covers text only where the view has no room at all.
Rect placeOfBar(const PlacedText& text, const Size& bar, const Size& view);

}
