#pragma once

#include <string>

namespace pagora {

// Whether a font family can write Latin text. Also true of a family that is not installed, which another one stands
// for. Main thread.
bool hasLatinLetters(const std::string& family);

}
