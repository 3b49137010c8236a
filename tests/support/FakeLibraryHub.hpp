#pragma once

#include "library_views/LibraryHub.hpp"

#include <string>
#include <vector>

namespace pagora::test {

// Records the calls of the library views.
class FakeLibraryHub : public LibraryHub {
public:
    void sendDoubleClick() override { ++timesOpened; }
    void deleteItemFromCollection(const BookInfoPtr& book, ByRemovingFromDisk remove) override
    {
        deleted.push_back(book);
        removedFromDisk = remove == ByRemovingFromDisk::Yes;
    }
    void deleteItemsFromLibrary(const std::vector<BookInfoPtr>& books) override
    {
        ++timesDeletedMany;
        deleted.insert(deleted.end(), books.begin(), books.end());
    }
    void selectFile(const std::string& path) override { revealed.push_back(path); }
    void draggedEpubs(std::vector<std::string> files) override { drops.push_back(std::move(files)); }

    int timesOpened = 0;
    std::vector<BookInfoPtr> deleted;
    bool removedFromDisk = false;
    int timesDeletedMany = 0;
    std::vector<std::string> revealed;
    std::vector<std::vector<std::string>> drops;
};

}
