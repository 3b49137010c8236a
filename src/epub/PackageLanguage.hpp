#pragma once

#include <string>

namespace pagora {

// Returns the language of the book that is unpacked in this folder: the tag of the first language in its package
// document, such as "en" or "pt-BR". Empty if there is none, or if the container does not name a package document in
// the folder. Reads only the start of both files. Thread-safe.
std::string packageLanguage(const std::string& folder);

// Returns the first language in the text of a package document.
std::string languageInPackage(const std::string& document);

}
