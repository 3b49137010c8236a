#include "base/SearchText.hpp"

#include "base/Folding.hpp"
#include "base/Unicode.hpp"

#include <glib.h>

#include <algorithm>
#include <array>

namespace pagora {

namespace {

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

}

std::string searchText(std::string_view text)
{
    std::string result;
    if (isAscii(text)) {
        result.resize(text.size());
        std::transform(text.begin(), text.end(), result.begin(), [](char c) { return g_ascii_tolower(c); });
        return result;
    }
    // Compose first: both spellings of a letter whose mark is not an accent must become equal.
    const auto valid = composedForm(validUtf8(text));
    result.reserve(valid.size());
    std::array<char, 6> bytes {};
    for (const char* at = valid.data(); at < valid.data() + valid.size(); at = g_utf8_next_char(at)) {
        const auto letters = folded(g_utf8_get_char(at), Folding {});
        for (std::size_t i = 0; i < letters.count; ++i)
            result.append(
                bytes.data(), static_cast<std::size_t>(g_unichar_to_utf8(letters.characters[i], bytes.data())));
    }
    return result;
}

std::vector<std::string> searchWords(std::string_view pattern)
{
    const auto text = searchText(pattern);
    std::vector<std::string> words;
    std::string word;
    const auto endWord = [&] {
        if (!word.empty())
            words.push_back(std::move(word));
        word.clear();
    };
    for (const char* at = text.data(); at < text.data() + text.size();) {
        const char* const next = g_utf8_next_char(at);
        if (*at == '\0' || g_unichar_isspace(g_utf8_get_char(at)))
            endWord();
        else
            word.append(at, next);
        at = next;
    }
    endWord();
    std::sort(words.begin(), words.end(),
        [](const auto& a, const auto& b) { return a.size() != b.size() ? a.size() > b.size() : a < b; });
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

}
