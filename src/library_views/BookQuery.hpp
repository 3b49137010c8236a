#pragma once

#include "catalogue/BookInfo.hpp"

#include <string>
#include <vector>

namespace pagora {

// The order of the books in a library view. It is stable: equal books keep the order of the catalogue.
enum class BookOrder {
    // The order of the catalogue.
    AsAdded,
    // By title, sorted by the rules of the user's language. Books without a title come last.
    Title,
    // By author, then by title. Books without an author come last.
    Author,
    // Most recently read first. Books that were never read come last.
    LastRead,
};

// Selects and orders the books of a library view.
struct BookQuery {
    // Words from `searchWords`. A book matches if its title, author or identifier contains each of them.
    std::vector<std::string> words;
    BookOrder order = BookOrder::AsAdded;
    // For `LastRead`: the books that were read, most recent first.
    std::vector<BookInfoPtr> lastRead;

    bool asksForAll() const { return words.empty(); }
    // Returns whether all books are shown in the order of the catalogue.
    bool leavesAllInPlace() const { return asksForAll() && order == BookOrder::AsAdded; }
};

}
