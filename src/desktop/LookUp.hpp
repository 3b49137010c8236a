#pragma once

#include "base/Url.hpp"

#include <string>

namespace pagora {

// The address of a web search, to which the words are appended.
inline constexpr const char* webSearchAddress = "https://duckduckgo.com/?q=";

// Returns the part of a selected text that is looked up: one line of at most 200 characters, without control
// characters.
std::string wordsToLookUp(const std::string& text);

// Returns the URL of a web search for the words.
Url webSearch(const std::string& words);

}
