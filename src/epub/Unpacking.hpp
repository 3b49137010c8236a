#pragma once

#include "catalogue/BookInfo.hpp"

#include <stop_token>
#include <string>
#include <vector>

namespace pagora {

// Extraction for the library. Success is not reported; callers check for the files that they need. Thread-safe.

// Extracts the members with those names, each with its own folders, into the folder `toPath`. Missing members are
// skipped; "*", "?" and "[" in a name are wildcards; existing files are overwritten.
void unpackFromBook(
    const std::string& archivePath, const std::vector<std::string>& contentFiles, const std::string& toPath);

// Extracts the whole archive of a book into its `bookPath`, until `stop` is requested.
void unZipBook(const BookInfo& book, const std::stop_token& stop = {});

}
