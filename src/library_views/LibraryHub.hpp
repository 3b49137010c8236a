#pragma once

#include "catalogue/BookInfo.hpp"

#include <string>
#include <vector>

namespace pagora {

enum class ByRemovingFromDisk : bool { No, Yes };

// The hub's operations that the library views use. Main thread only.
class LibraryHub {
public:
    virtual ~LibraryHub() = default;
    // Opens the first selected book of the view that is shown.
    virtual void sendDoubleClick() = 0;
    // Removes the first book with the record's identifier from the library. With `remove`, the record's archive is
    // moved to the Trash even if no book matched. If it cannot be moved, archive and book stay, and an alert says so.
    virtual void deleteItemFromCollection(const BookInfoPtr& book, ByRemovingFromDisk remove) = 0;
    // Removes each book in the same way, in order, with the archives.
    virtual void deleteItemsFromLibrary(const std::vector<BookInfoPtr>& books) = 0;
    // Shows the file in the desktop's file manager.
    virtual void selectFile(const std::string& path) = 0;
    // Imports dropped files in the background.
    virtual void draggedEpubs(std::vector<std::string> files) = 0;
};

}
