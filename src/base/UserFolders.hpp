#pragma once

#include <string>

namespace pagora {

// The user's own folders, as absolute paths. No folder is created. Thread-safe.

std::string homeFolder();
// Returns the user's documents folder; "Documents" in the home folder if none is set.
std::string documentsFolder();
std::string cachesFolder();
// Returns the folder of the stored values.
std::string defaultsFolder();

}
