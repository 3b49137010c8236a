#pragma once

#include <string>

namespace pagora {

// Whether a font family has Latin letters. Also true for families that are not installed but substituted. Main thread.
bool hasLatinLetters(const std::string& family);

// Whether an installed font has the letters of the language, given as "ja" or "pt-BR". True as well of languages that
// are written in Latin letters, and of those whose letters are not known. Main thread.
bool isWrittenByAnyFont(const std::string& language);

}
