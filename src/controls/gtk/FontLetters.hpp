#pragma once

#include <string>

namespace pagora {

// Returns whether a font family has Latin letters. Also true for families that are not installed but substituted. Main
// thread only.
bool hasLatinLetters(const std::string& family);

// Returns whether an installed font has the letters of the language, given as "ja" or "pt-BR". Also true for languages
// that use Latin letters or whose letters are not known. Main thread only.
bool isWrittenByAnyFont(const std::string& language);

}
