#pragma once

#include <string>

namespace pagora {

// Lets every window follow the style sheet of the program's resource folder with this file name, and finds the
// program's own icons. A sheet counts once. Main thread, with a display.
void addStyleSheet(const std::string& fileName);

}
