#pragma once

#include "catalogue/BookInfo.hpp"

#include <vector>

namespace pagora {

// What the library views need from the hub.
class LibraryHub {
public:
    virtual ~LibraryHub() = default;
    // Opens the first selected book of the view that is shown.
    virtual void sendDoubleClick() = 0;
    // Takes the books out of the library and moves their archives to the Trash.
    virtual void deleteItemsFromLibrary(const std::vector<BookInfoPtr>& books) = 0;
};

}
