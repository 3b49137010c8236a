#pragma once

#include <string>

namespace pagora {

// The library's folders: absolute paths that are set at startup and not changed afterwards.
struct LibraryFolders {
    // Folder of the archives of the books. It belongs to the user.
    std::string libPath;
    // Folder that is emptied at every launch.
    std::string tempPath;
    // Parent folder of the unpacked books.
    std::string _booksPath;
    // Scratch folder of the inspection, emptied before each book of a batch.
    std::string _dataPath;
};

}
