#pragma once

#include "notebook/MarksExportPanel.hpp"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace pagora {

// A book of the library whose marks are exported.
struct BookToExport {
    std::string archive;
    MarkedBook book;
    // The paths of the book's documents in reading order, and of the entries of its contents with their titles.
    std::vector<std::string> documents;
    std::vector<std::pair<std::string, std::string>> contents;
};

// Returns the names, without extension, of the archives in a folder that have a file of marks. Reads the disk.
// Thread-safe.
std::set<std::string> namesWithMarks(const std::string& folder);

// Writes the marks of a book that match the filter to a new file in the folder. Returns the number of marks; nullopt if
// the book's file could not be read or the new file could not be written. Reads and writes the disk. Thread-safe.
std::optional<std::size_t> exportMarksOf(const BookToExport& book, const MarksExportRequest& request);

}
