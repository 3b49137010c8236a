#pragma once

#include "library_views/ArrayController.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace pagora {

// The books of an array that a view shows, in the view's order. An index refers to the array, a position to the view.
// Immutable; copies share the content.
class ShownBooks {
public:
    // Indexes, each at most once.
    using Indexes = std::vector<std::uint32_t>;

    // All books of the array, in its order.
    explicit ShownBooks(BookArray books)
        : _books(std::move(books))
    {
    }
    // The books with these indexes, in this order.
    ShownBooks(BookArray books, Indexes indexes)
        : _books(std::move(books))
        , _indexes(std::make_shared<const Indexes>(std::move(indexes)))
    {
    }

    const BookArray& books() const { return _books; }
    std::size_t size() const { return _indexes ? _indexes->size() : _books->size(); }
    const BookInfoPtr& at(std::size_t position) const { return (*_books)[indexAt(position)]; }
    std::size_t indexAt(std::size_t position) const { return _indexes ? (*_indexes)[position] : position; }

    // Returns the indexes of the books at these positions, ascending.
    std::vector<std::size_t> indexesAt(const std::vector<std::size_t>& positions) const;
    // Returns the positions of the books with these indexes, ascending. Omits books that are not shown.
    std::vector<std::size_t> positionsOf(const std::vector<std::size_t>& indexes) const;

private:
    BookArray _books;
    // Null for all books in the order of the array.
    std::shared_ptr<const Indexes> _indexes;
};

}
