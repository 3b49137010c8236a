#pragma once

#include <string>

namespace pagora {

// The user's own folders, as absolute paths; nothing is made. Any thread.

std::string homeFolder();
// The first of the user's documents folders; "Documents" in the home folder where none is set.
std::string documentsFolder();
std::string cachesFolder();
// Where the program keeps its stored values.
std::string defaultsFolder();

}
