#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The place of a mark in the open book: its spine document, counted from 0, and places in it as in `ChapterText`. A
// bookmark has equal `start` and `end`.
struct MarkAnchor {
    std::size_t chapter = 0;
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    // The text at that place, in one line.
    std::string text;
    bool operator==(const MarkAnchor&) const = default;
};

// The documents of an unpacked book.
struct MarkedDocuments {
    // The files of the spine documents in reading order, the folder of the unpacked book, and the folder of its package
    // document.
    std::vector<std::string> paths;
    std::string folder;
    std::string packageFolder;

    // Returns the value of `MarkedText::source` for that document.
    std::string sourceOf(std::size_t chapter) const;
    // Returns the index of the document with that source; nullopt if the book has none.
    std::optional<std::size_t> chapterOf(const std::string& source) const;
};

}
