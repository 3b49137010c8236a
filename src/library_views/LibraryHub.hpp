#pragma once

#include "catalogue/BookInfo.hpp"

#include <string>
#include <vector>

namespace pagora {

enum class ByRemovingFromDisk : bool { No, Yes };

// What the library views need from the hub. Main thread.
class LibraryHub {
public:
    virtual ~LibraryHub() = default;
    // Opens the first selected book of the view that is shown.
    virtual void sendDoubleClick() = 0;
    // Takes the first book with the record's identifier out of the library; with `remove`, the record's archive goes to
    // the Trash, also when no book matched. An archive that no Trash takes stays, with its book, and an alert says so.
    virtual void deleteItemFromCollection(const BookInfoPtr& book, ByRemovingFromDisk remove) = 0;
    // The same for each of the records, in order, their archives included.
    virtual void deleteItemsFromLibrary(const std::vector<BookInfoPtr>& books) = 0;
    // Shows the file in the desktop's file manager.
    virtual void selectFile(const std::string& path) = 0;
    // Imports dropped files in the background.
    virtual void draggedEpubs(std::vector<std::string> files) = 0;
};

}
