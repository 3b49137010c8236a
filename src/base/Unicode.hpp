#pragma once

#include <string>
#include <string_view>

namespace pagora {

// Normalizes a text to composed letters (NFC), or to letters followed by their accents (NFD). Invalid UTF-8 is returned
// unchanged.
std::string composedForm(std::string_view text);
std::string decomposedForm(std::string_view text);

// Replaces invalid UTF-8 bytes by replacement characters.
std::string validUtf8(std::string_view text);
bool isUtf8(std::string_view text);

}
