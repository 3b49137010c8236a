#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// The text in the form in which searches compare it: lower case, without accents, with ligatures and other variants of
// letters, quotes and dashes replaced by the usual ones. Bytes that are not UTF-8 become replacement characters. Any
// thread.
std::string searchText(std::string_view text);

// The words of a pattern in that form, without repetitions, the longest first. None for a pattern without a word, such
// as one of accents alone. Any thread.
std::vector<std::string> searchWords(std::string_view pattern);

}
