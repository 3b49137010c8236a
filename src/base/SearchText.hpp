#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// Returns the normalized form that searches compare: lower case, without accents, with ligatures, letter variants,
// quotes and dashes replaced by the usual characters. Invalid UTF-8 bytes become replacement characters. Thread-safe.
std::string searchText(std::string_view text);

// Returns the distinct words of a pattern in that form, longest first; empty for a pattern without a word, such as
// accents alone. Thread-safe.
std::vector<std::string> searchWords(std::string_view pattern);

}
