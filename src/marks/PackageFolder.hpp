#pragma once

#include <string>

namespace pagora {

// Returns the folder of the package document of an unpacked book, according to its container; `bookFolder` if the
// container does not name one. Reads the disk. Thread-safe.
std::string packageFolderOf(const std::string& bookFolder);

}
