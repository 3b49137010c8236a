#pragma once

#include "reader/Destination.hpp"
#include "reader/JumpHistory.hpp"

#include <optional>
#include <vector>

namespace pagora {

// What the reader knows of jumps: the way that they made, and where the last one is to land.
struct Jumps {
    JumpHistory history;
    // The page that is shown; missing while it is none of the book.
    std::optional<SeenPage> seenPage;
    // The document of the page that is shown, whether it is one of the book or not.
    std::optional<Url> shownDocument;
    // The last jump was one of the slider, which is moved through many places.
    bool isSeeking = false;
    // The place whose page is shown until the user moves.
    std::optional<PlaceInChapter> landing;
    // Where the pages of the printed edition begin, in order.
    std::vector<Url> printedPages;
};

}
