#pragma once

#include <cstddef>
#include <string>

namespace pagora::bench {

// Makes `home` the home folder of somebody whose library holds that many books, as it is after they were imported and
// the program was closed: the stored values with their backup, and the library folder. The archives in it have names
// and a size, but no contents and no place on the disk. The books are everyday ones whose numbers follow `firstNumber`.
void makeCatalogue(const std::string& home, std::size_t count, std::size_t firstNumber = 100'000);

// Where the program keeps its things below a home folder.
std::string libraryFolderIn(const std::string& home);
std::string defaultsFolderIn(const std::string& home);
std::string cachesFolderIn(const std::string& home);

}
