#pragma once

#include <string>

namespace pagora {

// The language of a book that is unpacked in this folder, by its package document: a tag as "en" or "pt-BR", of the
// first language that is named. Empty where none is, and where the container names no package document in the folder.
// Reads the beginnings of both files and no markup but two elements. Any thread.
std::string packageLanguage(const std::string& folder);

// The same from the document's text.
std::string languageInPackage(const std::string& document);

}
