#pragma once

#include <string>

namespace pagora {

// Whether a font family has Latin letters. Also true for families that are not installed but substituted. Main thread.
bool hasLatinLetters(const std::string& family);

}
