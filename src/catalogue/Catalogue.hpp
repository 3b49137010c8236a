#pragma once

#include "base/Value.hpp"
#include "catalogue/BookInfo.hpp"
#include "catalogue/PreparedRecords.hpp"
#include "store/UserDefaults.hpp"

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The library's books as three parallel arrays: stored entries (`bookData`), records (`bookList`) and archive locations
// (`epubLocations`, which tells whether a file is in the library).
//
// Invariant: the arrays have the same length and order; every change is made at one index of all three.
//
// Thread-safe; readers get copies or immutable lists.
class Catalogue {
public:
    // Stores the whole catalogue under "BookData" and flushes. Concurrent saves are serialized.
    void save(UserDefaults& defaults) const;

    // Sets the stored entries; `bookDataToList` creates the records.
    void setBookData(Value::Array bookData);
    // Appends one record and one location for each stored entry. Uses the records in `prepared`.
    void bookDataToList(PreparedRecords* prepared = nullptr);
    void clear();

    // Appends a book at the end of all three arrays. `location` is its archive's file name.
    void append(const BookInfoPtr& book, Value entry, std::string location);
    void removeAt(std::size_t index);
    // For each identifier, in order, removes the first book whose stored entry has it. Returns for each identifier
    // whether a book was found.
    std::vector<bool> removeFirstWithISBNs(const std::vector<std::string>& isbns);
    // Replaces the stored entry of the record. Returns false if the record is not in the catalogue.
    bool replaceEntry(const BookInfoPtr& book, Value entry);

    std::size_t count() const;
    // Returns the stored entries of the whole catalogue.
    Value bookData() const;
    // Returns the list of records, which is shared until the catalogue changes.
    std::shared_ptr<const std::vector<BookInfoPtr>> bookList() const;
    BookInfoPtr lastBook() const;
    std::vector<std::string> epubLocations() const;
    // Returns the locations in one text, joined with " ## ".
    std::string knownNames() const;
    // Returns the stored entry of a record, found by identity; nullopt if the record is not in the catalogue.
    std::optional<Value> entryOf(const BookInfoPtr& book) const;
    // Returns whether the file at this path is a book's archive.
    bool holdsArchive(const std::string& epubPath) const;

private:
    std::optional<std::size_t> indexOf(const BookInfoPtr& book) const;

    mutable std::mutex _mutex;
    mutable std::mutex _saving;
    Value::Array _bookData;
    std::vector<BookInfoPtr> _bookList;
    std::vector<std::string> _epubLocations;
    mutable std::shared_ptr<const std::vector<BookInfoPtr>> _sharedBookList;
};

}
