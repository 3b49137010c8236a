#include "base/SearchText.hpp"

#include "base/Unicode.hpp"

#include <glib.h>

#include <algorithm>
#include <array>
#include <memory>

namespace pagora {

namespace {

struct Replacement {
    gunichar letter;
    std::string_view by;
};

// Letters that have no decomposition, and marks that keyboards write in another way; in ascending order.
constexpr std::array replacements {
    Replacement { 0x00E6, "ae" },
    Replacement { 0x00F0, "d" },
    Replacement { 0x00F8, "o" },
    Replacement { 0x00FE, "th" },
    Replacement { 0x0111, "d" },
    Replacement { 0x0127, "h" },
    Replacement { 0x0131, "i" },
    Replacement { 0x0142, "l" },
    Replacement { 0x0153, "oe" },
    Replacement { 0x0167, "t" },
    Replacement { 0x02BC, "'" },
    Replacement { 0x2010, "-" },
    Replacement { 0x2011, "-" },
    Replacement { 0x2012, "-" },
    Replacement { 0x2013, "-" },
    Replacement { 0x2014, "-" },
    Replacement { 0x2018, "'" },
    Replacement { 0x2019, "'" },
    Replacement { 0x201C, "\"" },
    Replacement { 0x201D, "\"" },
};

// Marks of a higher class stand above or below a letter; those of lower classes make another letter of it, as the sign
// of voiced sounds in kana does.
constexpr int lastClassOfLetters = 9;

bool isIgnored(gunichar character)
{
    return g_unichar_combining_class(character) > lastClassOfLetters || g_unichar_type(character) == G_UNICODE_FORMAT;
}

void append(std::string& text, gunichar character)
{
    const auto* const found = std::lower_bound(replacements.begin(), replacements.end(), character,
        [](const Replacement& replacement, gunichar letter) { return replacement.letter < letter; });
    if (found != replacements.end() && found->letter == character) {
        text += found->by;
        return;
    }
    std::array<char, 6> bytes {};
    text.append(bytes.data(), static_cast<std::size_t>(g_unichar_to_utf8(character, bytes.data())));
}

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

// What the C library returns, to be freed by g_free().
std::unique_ptr<gchar, decltype(&g_free)> owned(gchar* text)
{
    return { text, &g_free };
}

}

std::string searchText(std::string_view text)
{
    std::string folded;
    if (isAscii(text)) {
        folded.resize(text.size());
        std::transform(text.begin(), text.end(), folded.begin(), [](char c) { return g_ascii_tolower(c); });
        return folded;
    }
    const auto valid = validUtf8(text);
    const auto parted = owned(g_utf8_normalize(valid.data(), static_cast<gssize>(valid.size()), G_NORMALIZE_ALL));
    const auto lower = owned(g_utf8_casefold(parted.get(), -1));
    folded.reserve(text.size());
    for (const char* at = lower.get(); *at; at = g_utf8_next_char(at)) {
        if (const auto character = g_utf8_get_char(at); !isIgnored(character))
            append(folded, character);
    }
    return folded;
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
