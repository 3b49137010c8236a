#pragma once

#include <string>
#include <vector>

namespace pagora {

// Returns the names of the entries of a folder with exactly the extension "epub", in the system's order; none if the
// folder cannot be listed. Thread-safe.
std::vector<std::string> bookNamesIn(const std::string& folder);
// Returns them as absolute paths.
std::vector<std::string> booksIn(const std::string& folder);
// Returns the sorted absolute paths of the files in a folder and its subfolders with the extension "epub" in any case.
// Omits hidden files and folders, links to folders, and folders that cannot be listed. Thread-safe.
std::vector<std::string> booksBelow(const std::string& folder);

}
