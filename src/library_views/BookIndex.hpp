#pragma once

#include "library_views/BookQuery.hpp"
#include "library_views/ShownBooks.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Finds and orders the books of one array. The folded texts of the books and the rank of each book in each order are
// computed on first use and cached. Use each object on one thread at a time.
class BookIndex {
public:
    explicit BookIndex(BookArray books)
        : _books(std::move(books))
    {
    }

    const BookArray& books() const { return _books; }
    // Builds the texts for searches.
    void prepare();
    // Calls `isWanted` from time to time and returns nullopt if it returns false.
    std::optional<ShownBooks> find(const BookQuery& query, const std::function<bool()>& isWanted);

private:
    using Indexes = ShownBooks::Indexes;
    using Key = std::function<std::string(const BookInfo&)>;

    bool hasAll(std::size_t index, const std::vector<std::string>& words) const;
    // Returns all books in the order of the query; null for the order of the catalogue.
    const Indexes* ordered(const BookQuery& query);
    Indexes sorted(const Key& key) const;
    Indexes byLastReading(const std::vector<BookInfoPtr>& lastRead) const;

    BookArray _books;
    // The texts of all books in one string, and the end of each book in it.
    std::string _texts;
    std::vector<std::size_t> _ends;
    Indexes _byTitle;
    Indexes _byAuthor;
    Indexes _byLastReading;
};

}
