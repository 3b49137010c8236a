#pragma once

#include <cstddef>
#include <cstdint>

namespace pagora {

// Limits on what a book may use. docs/security.md gives the reason for each number. A book that exceeds one is not
// imported; a cover that does is left out.

// Limits on an archive, checked against its directory.
struct ArchiveLimits {
    std::uint64_t members = 65'535;
    std::uint64_t directoryBytes = 16u << 20;
    // Members whose names collide in the archive library's hash table; it takes quadratic time in their number.
    std::uint64_t alikeNames = 1'000;
    std::uint64_t memberBytes = 2ull << 30;
    std::uint64_t totalBytes = 4ull << 30;
    // Expanded bytes per byte of the archive. Not checked for archives that expand to less than `freeBytes`.
    std::uint64_t ratio = 200;
    std::uint64_t freeBytes = 64u << 20;
    std::size_t pathBytes = 4'096;
    std::size_t depth = 100;
};

// Limits on one XML document.
struct XmlLimits {
    std::size_t bytes = 32u << 20;
    int depth = 20'000;
    std::size_t elements = 1'000'000;
    // Maximum number of attributes of one element.
    std::size_t attributes = 1'000;
    // Maximum size of the internal DTD subset.
    std::size_t subsetBytes = 16u << 10;
    // Characters reported per byte read, beyond a free amount. Only entity expansion can exceed 1.
    std::size_t expansionRatio = 10;
    std::size_t freeExpansion = 8u << 20;
};

// Limits on what is kept of one book's documents.
struct BookLimits {
    std::size_t manifestItems = 100'000;
    std::size_t spineEntries = 10'000;
    std::size_t contentsEntries = 10'000;
    // Maximum length of a title, an author or a label of the table of contents.
    std::size_t textBytes = 1u << 16;
    // Maximum size of the book's stored entry in the catalogue.
    std::size_t entryBytes = 1u << 20;
    // Disk space of the members that are extracted for the inspection.
    std::uint64_t extractedBytes = 256u << 20;
};

// Limits on the inspection process, for each book.
struct InspectionLimits {
    unsigned processorSeconds = 5;
    // Elapsed time, including waits for the disk.
    unsigned seconds = 120;
    // Memory that the process can allocate, and its resident memory with shared libraries.
    std::uint64_t memoryBytes = 172u << 20;
    std::uint64_t residentBytes = 196u << 20;
    // Processor time for a cover that is prefetched.
    unsigned coverProcessorSeconds = 2;
};

// Limits on a picture.
struct PictureLimits {
    std::size_t fileBytes = 64u << 20;
    // Pixels in memory, after decoding at a reduced size where the format allows it.
    std::int64_t pixels = 24'000'000;
    // Pixels of the picture itself. Decoding takes time for every pixel, including those that a reduced size drops.
    std::int64_t decodedPixels = 600'000'000;
};

}
