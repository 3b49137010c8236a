#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Where a mark is in the book that is read: its spine document, counted from 0, and places in it as `ChapterText`
// counts them; `start` is `end` at a bookmark.
struct MarkAnchor {
    std::size_t chapter = 0;
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    // The marked text as it is there, in one line.
    std::string text;
    bool operator==(const MarkAnchor&) const = default;
};

// The documents of an unpacked book.
struct MarkedDocuments {
    // The spine documents' files in reading order, the folder of the unpacked book, and the one of its package
    // document.
    std::vector<std::string> paths;
    std::string folder;
    std::string packageFolder;

    // How a mark names that document.
    std::string sourceOf(std::size_t chapter) const;
    // The document that a mark names; missing where the book has none of that name.
    std::optional<std::size_t> chapterOf(const std::string& source) const;
};

}
