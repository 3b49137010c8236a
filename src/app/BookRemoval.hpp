#pragma once

#include "app/LibraryState.hpp"
#include "library_views/LibraryHub.hpp"
#include "library_views/LibraryViews.hpp"

#include <string>
#include <vector>

namespace pagora {

// Removes books from the catalogue and moves their archives to the Trash. Main thread only; archives are moved in the
// background, because the Trash may be on another disk.
class BookRemoval {
public:
    BookRemoval(const Platform& platform, LibraryState& state, LibraryViews& views);

    // For each record, in order, removes the first book with its identifier from the library. With `remove`, also
    // removes the record's archive, even if no book matched. Archives that cannot be moved to the Trash stay with their
    // books, and one alert names all of them.
    void remove(const std::vector<BookInfoPtr>& books, ByRemovingFromDisk remove);

private:
    // Removes the books from the catalogue. Returns false if the library has none of them.
    bool takeOut(std::vector<BookInfoPtr> books);
    void removeKeptPages(const std::vector<BookInfoPtr>& before);
    void recycle(std::vector<std::string> archives);
    // Shows an alert about archives that stay; does nothing if there are none.
    void tell(const std::string& title, const std::vector<std::string>& archives, const std::string& outcome);

    Platform _platform;
    LibraryState& _state;
    LibraryViews& _views;
};

}
