#pragma once

#include "catalogue/BookInfo.hpp"

#include <cstddef>
#include <vector>

namespace pagora {

// The selection in the library, shared by both views.
struct LibrarySelection {
    // The only selected book, on which menu actions operate; null unless exactly one is selected.
    BookInfoPtr selectedBook;
    // The grid's selection at the last click or key.
    std::vector<std::size_t> gridSelection;
    // The list's selection at the last click or key.
    std::vector<BookInfoPtr> listSelection;
};

}
