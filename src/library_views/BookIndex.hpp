#pragma once

#include "library_views/BookQuery.hpp"
#include "library_views/ShownBooks.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Finds and orders the books of one array. What it needs for that is made ready when it is asked for first, and kept:
// the texts of the books as searches compare them, and a place for each book in each order. Any thread, one at a time.
class BookIndex {
public:
    explicit BookIndex(BookArray books)
        : _books(std::move(books))
    {
    }

    const BookArray& books() const { return _books; }
    // Makes searches ready.
    void prepare();
    // Asks `isWanted` now and then; gives up, with nothing, when it is not.
    std::optional<ShownBooks> find(const BookQuery& query, const std::function<bool()>& isWanted);

private:
    using Indexes = ShownBooks::Indexes;
    using Key = std::function<std::string(const BookInfo&)>;

    bool hasAll(std::size_t index, const std::vector<std::string>& words) const;
    // Every book in the order; null for that of the catalogue.
    const Indexes* ordered(const BookQuery& query);
    Indexes sorted(const Key& key) const;
    Indexes byLastReading(const std::vector<BookInfoPtr>& lastRead) const;

    BookArray _books;
    // The texts of all books, one after the other, and where that of each book ends.
    std::string _texts;
    std::vector<std::size_t> _ends;
    Indexes _byTitle;
    Indexes _byAuthor;
    Indexes _byLastReading;
};

}
