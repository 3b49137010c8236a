#pragma once

#include <cstddef>
#include <cstdint>

namespace pagora {

// What a book may ask of the machine. docs/security.md says why each number is what it is. A book past one of them is
// not imported; for a cover, it is only the picture that is left out.

// Of an archive, by what its directory says.
struct ArchiveLimits {
    std::uint64_t members = 65'535;
    std::uint64_t directoryBytes = 16u << 20;
    // Members whose names fall together where the archive library keeps them, which takes it the square of their
    // number.
    std::uint64_t alikeNames = 1'000;
    std::uint64_t memberBytes = 2ull << 30;
    std::uint64_t totalBytes = 4ull << 30;
    // Expanded bytes for each byte of the archive; archives that expand to less than `freeBytes` are not asked.
    std::uint64_t ratio = 200;
    std::uint64_t freeBytes = 64u << 20;
    std::size_t pathBytes = 4'096;
    std::size_t depth = 100;
};

// Of one document.
struct XmlLimits {
    std::size_t bytes = 32u << 20;
    int depth = 20'000;
    std::size_t elements = 1'000'000;
    // Of one element.
    std::size_t attributes = 10'000;
    // Told characters for each byte that was read, beyond a free amount; only entities can make more than one.
    std::size_t expansionRatio = 10;
    std::size_t freeExpansion = 8u << 20;
};

// Of what the documents of one book say.
struct BookLimits {
    std::size_t manifestItems = 100'000;
    std::size_t spineEntries = 100'000;
    std::size_t contentsEntries = 100'000;
    // A title, an author, a label in the table of contents.
    std::size_t textBytes = 1u << 16;
    // All paths of the reading order together, and all targets of the table of contents.
    std::size_t pathBytes = 16u << 20;
};

// Of a picture.
struct PictureLimits {
    std::size_t fileBytes = 64u << 20;
    // In memory, where a format can be decoded at a reduced size after that.
    std::int64_t pixels = 24'000'000;
    // Of the picture itself: decoding takes time for every pixel, also for those that a reduced size leaves out.
    std::int64_t decodedPixels = 600'000'000;
};

}
