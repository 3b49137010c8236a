#pragma once

#include "app/LibraryState.hpp"
#include "library_views/LibraryHub.hpp"
#include "library_views/LibraryViews.hpp"

#include <string>
#include <vector>

namespace pagora {

// Takes books out of the catalogue and moves their archives to the Trash. Main thread; the move follows in the
// background, for the Trash may be on another disk.
class BookRemoval {
public:
    BookRemoval(const Platform& platform, LibraryState& state, LibraryViews& views);

    // For each record, in order, removes the first book with its identifier from the library; with `remove`, the
    // record's archive as well, also when no book matched. Archives that cannot be moved to the Trash stay with their
    // books, and one alert names all of them.
    void remove(const std::vector<BookInfoPtr>& books, ByRemovingFromDisk remove);

private:
    // Returns false if no book of the library was among them.
    bool takeOut(std::vector<BookInfoPtr> books);
    void removeKeptPages(const std::vector<BookInfoPtr>& before);
    void recycle(std::vector<std::string> archives);
    // An alert about files that stay; none if there are none.
    void tell(const std::string& title, const std::vector<std::string>& archives, const std::string& outcome);

    Platform _platform;
    LibraryState& _state;
    LibraryViews& _views;
};

}
