#pragma once

#include <string>

namespace pagora {

// The library's folders: absolute paths that are set at startup and not changed afterwards.
struct LibraryFolders {
    // The archives of the books. The folder belongs to the user.
    std::string libPath;
    // Emptied at every launch.
    std::string tempPath;
    // Parent of the unpacked copies of books.
    std::string _booksPath;
    // Scratch folder of inspection, emptied before each book of a batch.
    std::string _dataPath;
};

}
