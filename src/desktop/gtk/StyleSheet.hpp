#pragma once

#include <string>

namespace pagora {

// Applies a style sheet from the program's resources to all windows, once, and adds the program's icons. Main thread,
// with a display.
void addStyleSheet(const std::string& fileName);

}
