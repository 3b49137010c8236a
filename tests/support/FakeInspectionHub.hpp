#pragma once

#include "epub/EpubInspection.hpp"

#include <string>
#include <utility>
#include <vector>

namespace pagora::test {

// Records the reports of an inspection.
class FakeInspectionHub : public InspectionHub {
public:
    // The library's folders are in `root`.
    explicit FakeInspectionHub(const std::string& root)
        : layout { root + "/library", root + "/cache", root + "/cache/_books", root + "/cache/_data" }
    {
    }

    LibraryFolders layout;
    std::vector<std::string> faultyBooks;
    BookInfoPtr _bookInfo;
    std::string _epubPath;

    const LibraryFolders& folders() const override { return layout; }
    void addFaultyBook(const std::string& line) override { faultyBooks.push_back(line); }
    void set_bookInfo(BookInfoPtr book) override { _bookInfo = std::move(book); }
    void set_epubPath(const std::string& path) override { _epubPath = path; }
};

}
