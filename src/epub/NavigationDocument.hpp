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
    // 1 for the outermost.
    std::int32_t level = 1;
};

// The lists of a navigation document that readers use: the contents, and the pages of the printed edition.
struct NavigationLists {
    std::vector<NavigationPoint> contents;
    std::vector<NavigationPoint> pages;
};

// Reads a navigation document, whatever its faults are. `path` is its file; targets count from its folder and are left
// out where they lead out of `bookFolder`. An entry without a target leads where the next one does. Of each list, the
// first entries up to the bound of a table of contents are taken. Any thread.
NavigationLists navigationLists(const std::string& document, const std::string& path, const std::string& bookFolder);

// The same of the book that lies unpacked in a folder: by its container, its package document and the item there that
// is the navigation document. Empty where there is none. Reads the disk; any thread.
NavigationLists navigationListsOf(const std::string& bookFolder);

}
