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
    std::size_t attributes = 1'000;
    // What a document type declares within the document.
    std::size_t subsetBytes = 16u << 10;
    // Told characters for each byte that was read, beyond a free amount; only entities can make more than one.
    std::size_t expansionRatio = 10;
    std::size_t freeExpansion = 8u << 20;
};

// Of what the documents of one book say.
struct BookLimits {
    std::size_t manifestItems = 100'000;
    std::size_t spineEntries = 10'000;
    std::size_t contentsEntries = 10'000;
    // A title, an author, a label in the table of contents.
    std::size_t textBytes = 1u << 16;
    // Its stored entry in the catalogue.
    std::size_t entryBytes = 1u << 20;
    // What its members take on the disk while it is inspected.
    std::uint64_t extractedBytes = 256u << 20;
};

// Of the process that inspects a book, for each book.
struct InspectionLimits {
    unsigned processorSeconds = 5;
    // Also while it waits for a disk.
    unsigned seconds = 120;
    // What it can get of its own, and what it may hold with the libraries that it shares.
    std::uint64_t memoryBytes = 172u << 20;
    std::uint64_t residentBytes = 196u << 20;
    // A cover that is scaled ahead of its book.
    unsigned coverProcessorSeconds = 2;
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
