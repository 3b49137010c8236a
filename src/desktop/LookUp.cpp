#include "desktop/LookUp.hpp"

#include "base/Unicode.hpp"

#include <glib.h>

#include <utility>

namespace pagora {

namespace {

constexpr glong maxCharacters = 200;

}

std::string wordsToLookUp(const std::string& text)
{
    std::string words;
    const std::string valid = validUtf8(text);
    bool isSpaced = false;
    glong count = 0;
    for (const char* at = valid.c_str(); *at; at = g_utf8_next_char(at)) {
        const gunichar character = g_utf8_get_char(at);
        if (g_unichar_isspace(character) || g_unichar_iscntrl(character)) {
            isSpaced = !words.empty();
            continue;
        }
        if (count + (isSpaced ? 2 : 1) > maxCharacters)
            break;
        count += isSpaced ? 2 : 1;
        if (std::exchange(isSpaced, false))
            words += ' ';
        words.append(at, static_cast<std::size_t>(g_utf8_next_char(at) - at));
    }
    return words;
}

Url webSearch(const std::string& words)
{
    char* const escaped = g_uri_escape_string(words.c_str(), nullptr, FALSE);
    const auto url = Url::fromString(std::string(webSearchAddress) + escaped);
    g_free(escaped);
    return *url;
}

}
