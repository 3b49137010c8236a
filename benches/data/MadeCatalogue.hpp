#pragma once

#include <cstddef>
#include <string>

namespace pagora::bench {

// Makes a home folder with a library of `count` imported books: the store with its backup, and the library folder. The
// archives are sparse files with a name and a size but no content. The numbers of the books follow `firstNumber`.
void makeCatalogue(const std::string& home, std::size_t count, std::size_t firstNumber = 100'000);

// Return the program's folders in a home folder.
std::string libraryFolderIn(const std::string& home);
std::string defaultsFolderIn(const std::string& home);
std::string cachesFolderIn(const std::string& home);

}
