#pragma once

#include <string>

namespace pagora {

// The folder of the package document of the book that lies unpacked in a folder, by its container; the folder itself
// where that does not say. Reads the disk; any thread.
std::string packageFolderOf(const std::string& bookFolder);

}
