#pragma once

#include <string>
#include <vector>

namespace pagora {

// The names of the entries of a folder that have the extension "epub", exactly so, in the order in which the system
// lists them; none when the folder cannot be listed. Any thread.
std::vector<std::string> bookNamesIn(const std::string& folder);
// The same as absolute paths.
std::vector<std::string> booksIn(const std::string& folder);
// The files with that extension, in small letters or capitals, in a folder and the folders below it, as absolute paths,
// sorted. Hidden files and folders, links to folders and folders that cannot be listed are left out. Any thread.
std::vector<std::string> booksBelow(const std::string& folder);

}
