#pragma once

#include <string>
#include <string_view>

namespace pagora {

// A text with every accented letter as one character (NFC), or as a letter and its accents (NFD). Bytes that are not
// UTF-8 come back unchanged.
std::string composedForm(std::string_view text);
std::string decomposedForm(std::string_view text);

// Bytes that are not UTF-8 become replacement characters.
std::string validUtf8(std::string_view text);
bool isUtf8(std::string_view text);

}
