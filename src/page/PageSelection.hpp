#pragma once

#include "base/Geometry.hpp"

#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The text that the person has selected in a page, as far as it is seen. Boxes are in the page's own pixels, from its
// upper left corner.
struct PageSelection {
    // `Change`: the selection that was reported before is another one now.
    enum class Way { Pointer, Key, Change };

    Way way = Way::Pointer;
    // Its beginning, at most 300 characters in one line.
    std::string text;
    // One for each column, at least one.
    std::vector<Rect> boxes;
    Rect firstLine;
    Rect lastLine;
};

// What a page tells of its selection: the way, the number of boxes, the boxes, the two lines and the text. Returns
// nullopt if that is not all there.
std::optional<PageSelection> pageSelectionFrom(std::istream& words);

}
