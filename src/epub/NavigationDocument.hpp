#pragma once

#include "base/Url.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace pagora {

// An entry of a list in a navigation document.
struct NavigationPoint {
    std::string text;
    // A file URL in the book's folder, with the entry's fragment.
    Url target;
    // 1 for the outermost level.
    std::int32_t level = 1;
};

// The lists of a navigation document that the readers use: the contents, and the pages of the printed edition.
struct NavigationLists {
    std::vector<NavigationPoint> contents;
    std::vector<NavigationPoint> pages;
};

// Reads a navigation document and tolerates any error. `path` is its file: targets are relative to its folder and are
// omitted if they lead out of `bookFolder`. An entry without a target gets the target of the next one. Each list is
// truncated to the maximum number of contents entries. Thread-safe.
NavigationLists navigationLists(const std::string& document, const std::string& path, const std::string& bookFolder);

// Reads the navigation document of the book that is unpacked in a folder, which is found with the container and the
// package document. Returns empty lists if there is none. Reads the disk. Thread-safe.
NavigationLists navigationListsOf(const std::string& bookFolder);

}
