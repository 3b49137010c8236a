#pragma once

#include "catalogue/BookInfo.hpp"
#include "store/UserDefaults.hpp"

#include <string>
#include <vector>

namespace pagora {

// The reflowable books of the library that were closed, the last one first. Stored as paths of archives under the key
// "LastRead", at most `maxCount`. Written when a book is closed; removed with all other keys. Main thread.
class ReadingHistory {
public:
    static constexpr std::size_t maxCount = 1'000;

    explicit ReadingHistory(UserDefaults& defaults)
        : _defaults(defaults)
    {
    }

    // Reaches the disk with the next flush.
    void add(const std::string& archive);
    // The book of the library that was closed last; null for none. A book that has no place was not read: it came under
    // the name of another one.
    BookInfoPtr last(const std::vector<BookInfoPtr>& library) const;
    // The books of the library that were read, the last one first. Those that have a place and are not known here, such
    // as books read by an earlier version, follow in the library's order.
    std::vector<BookInfoPtr> all(const std::vector<BookInfoPtr>& library) const;

private:
    // Books that were read: those that are known here, the last one first, and those that are not.
    struct Books {
        std::vector<BookInfoPtr> known;
        std::vector<BookInfoPtr> others;
    };

    std::vector<std::string> archives() const;
    Books books(const std::vector<BookInfoPtr>& library) const;

    UserDefaults& _defaults;
};

}
