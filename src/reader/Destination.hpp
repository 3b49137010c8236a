#pragma once

#include "base/Url.hpp"

#include <cstdint>
#include <string>
#include <variant>

namespace pagora {

// A range of text in a chapter, with places as in `ChapterText`.
struct TextInChapter {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    std::string text;
};

struct ElementInChapter {
    std::string id;
};

// A fraction of the chapter's text, from 0 to 1.
struct ShareOfChapter {
    double share = 0;
};

// A page of the chapter, from 1.
struct PageOfChapter {
    std::int64_t page = 1;
};

// The start of a page: its offset in a strip and a view of these sizes, in points.
struct OffsetInChapter {
    std::int64_t offset = 0;
    std::int64_t stripLength = 0;
    double viewWidth = 0;
    bool operator==(const OffsetInChapter&) const = default;
};

using PlaceInChapter = std::variant<TextInChapter, ElementInChapter, ShareOfChapter, PageOfChapter, OffsetInChapter>;

// The destination of a jump: a document of the book and a place in it. The page with that place is shown.
struct Destination {
    Url document;
    PlaceInChapter place;
};

}
