#pragma once

#include "base/Geometry.hpp"

#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The visible part of the text that the user has selected in a page. Boxes are in the page's own pixels, from its upper
// left corner.
struct PageSelection {
    // The source of the report. `Change`: a selection that was reported before has changed.
    enum class Cause { Pointer, Key, Change };

    Cause cause = Cause::Pointer;
    // The start of the text, at most 300 characters in one line.
    std::string text;
    // One box for each column, at least one.
    std::vector<Rect> boxes;
    Rect firstLine;
    Rect lastLine;
};

// Parses a page's message about its selection: the cause, the number of boxes, the boxes, the two lines and the text.
// Returns nullopt if it is incomplete.
std::optional<PageSelection> pageSelectionFrom(std::istream& words);

}
