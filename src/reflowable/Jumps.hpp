#pragma once

#include "reader/Destination.hpp"
#include "reader/JumpHistory.hpp"

#include <optional>
#include <vector>

namespace pagora {

// The state of jumps: their history and the destination of the last one.
struct Jumps {
    JumpHistory history;
    // The shown page; nullopt if it is not a page of the book.
    std::optional<SeenPage> seenPage;
    // The document of the shown page, also if it is not in the book.
    std::optional<Url> shownDocument;
    // True if the last jump came from the slider, whose moves count as one jump.
    bool isSeeking = false;
    // The destination to keep visible until the user navigates.
    std::optional<PlaceInChapter> landing;
    // The starts of the pages of the printed edition, in order.
    std::vector<Url> printedPages;
};

}
