#pragma once

#include <string>

namespace pagora {

// The language of an unpacked book by its package document, which lies in this folder: a tag as "en" or "pt-BR", of the
// first language that is named. Empty where none is, and where the folder has no package document or several. Reads the
// beginning of the file and no markup but the one element. Any thread.
std::string packageLanguage(const std::string& folder);

// The same from the document's text.
std::string languageInPackage(const std::string& document);

}
