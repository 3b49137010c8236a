#pragma once

#include "library_views/ArrayController.hpp"

#include <string>
#include <vector>

namespace pagora {

// In which order a library view shows books. Books that are alike in it keep the order of the catalogue.
enum class BookOrder {
    // That of the catalogue.
    AsAdded,
    // By the rules of the person's language. Books without a title, or an author, come last.
    Title,
    // The same; books of one author by title.
    Author,
    // The book read last comes first, books that were not read come last.
    LastRead,
};

// Which books a library view shows, and in which order.
struct BookQuery {
    // As `searchWords` gives them; a book has each of them in its title, author or identifier.
    std::vector<std::string> words;
    BookOrder order = BookOrder::AsAdded;
    // For the order by last reading: the books that were read, the last one first.
    std::vector<BookInfoPtr> lastRead;

    bool asksForAll() const { return words.empty(); }
    // Whether every book is shown at the place that it has in the catalogue.
    bool leavesAllInPlace() const { return asksForAll() && order == BookOrder::AsAdded; }
};

}
