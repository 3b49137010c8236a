#pragma once

#include <string>
#include <string_view>

namespace pagora {

// Returns a text of a book or of another program for display: control characters and overrides of the text direction
// are replaced by U+FFFD. Line feeds and tabs are kept. The text is UTF-8.
std::string plainText(std::string_view text);

// Does the same for use within a sentence: the text is isolated, so its direction does not affect the sentence.
std::string isolatedText(std::string_view text);

}
