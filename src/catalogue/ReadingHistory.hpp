#pragma once

#include "catalogue/BookInfo.hpp"
#include "store/UserDefaults.hpp"

#include <string>
#include <vector>

namespace pagora {

// The reflowable books of the library that were closed, most recent first. Stored as paths of archives under the key
// "LastRead", at most `maxCount`. Written when a book is closed; removed with all other keys. Main thread only.
class ReadingHistory {
public:
    static constexpr std::size_t maxCount = 1'000;

    explicit ReadingHistory(UserDefaults& defaults)
        : _defaults(defaults)
    {
    }

    // The change is stored with the next flush.
    void add(const std::string& archive);
    // Returns the book of the library that was closed last; null if there is none. A listed book without a stored place
    // was not read: another book had the same path before it.
    BookInfoPtr last(const std::vector<BookInfoPtr>& library) const;
    // Returns the books of the library that were read, most recent first. Books with a stored place that are not listed
    // here, such as books read with an earlier version, follow in the library's order.
    std::vector<BookInfoPtr> all(const std::vector<BookInfoPtr>& library) const;

private:
    // The books that were read: listed ones, most recent first, and others.
    struct Books {
        std::vector<BookInfoPtr> known;
        std::vector<BookInfoPtr> others;
    };

    std::vector<std::string> archives() const;
    Books books(const std::vector<BookInfoPtr>& library) const;

    UserDefaults& _defaults;
};

}
