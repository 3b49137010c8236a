#pragma once

#include <string>
#include <vector>

namespace pagora {

// The names of the entries of a folder that have the extension "epub", exactly so, in the order in which the system
// lists them; none if the folder cannot be listed. Thread-safe.
std::vector<std::string> bookNamesIn(const std::string& folder);
// The same as absolute paths.
std::vector<std::string> booksIn(const std::string& folder);
// The absolute paths, sorted, of the files in a folder and its subfolders whose extension is "epub" in any case. Hidden
// files and folders, links to folders and folders that cannot be listed are left out. Thread-safe.
std::vector<std::string> booksBelow(const std::string& folder);

}
