#pragma once

#include <string>

namespace pagora {

// Applies a style sheet from the program's resources to all windows, once, and adds the program's icons. Needs a
// display. Main thread only.
void addStyleSheet(const std::string& fileName);

}
