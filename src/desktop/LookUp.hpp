#pragma once

#include "base/Url.hpp"

#include <string>

namespace pagora {

// The address of a web search; the words to search for follow it.
inline constexpr const char* webSearchAddress = "https://duckduckgo.com/?q=";

// The part of a selected text that is looked up: in one line, at most 200 characters, without control characters.
std::string wordsToLookUp(const std::string& text);

// A web search for the words.
Url webSearch(const std::string& words);

}
