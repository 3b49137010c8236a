#pragma once

#include "catalogue/BookInfo.hpp"

#include <stop_token>
#include <string>
#include <vector>

namespace pagora {

// Extraction for the library. Success is not reported; callers check for the files that they need. Any thread.

// Extracts the members of those names, each under its own folders, into the folder `toPath`. Members that the archive
// does not hold are passed over; "*", "?" and "[" in a name are wildcards; existing files are overwritten.
void unpackFromBook(
    const std::string& archivePath, const std::vector<std::string>& contentFiles, const std::string& toPath);

// Extracts the whole archive of a book into its `bookPath`, until `stop` asks to end.
void unZipBook(const BookInfo& book, const std::stop_token& stop = {});

}
