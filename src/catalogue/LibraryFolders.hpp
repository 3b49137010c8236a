#pragma once

#include <string>

namespace pagora {

// Where the library lives. Absolute paths, laid out by start-up and not changed afterwards.
struct LibraryFolders {
    // One EPUB archive a book, as flat files; the person's own.
    std::string libPath;
    // Emptied at every launch.
    std::string tempPath;
    // Parent of the unpacked copies of books.
    std::string _booksPath;
    // Scratch folder of inspection, emptied before each book of a batch.
    std::string _dataPath;
};

}
