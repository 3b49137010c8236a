#include "find/TextPattern.hpp"

#include "base/Unicode.hpp"
#include "find/ChapterText.hpp"

#include <glib.h>

#include <algorithm>
#include <array>

namespace pagora {

namespace {

// The character at a byte offset of a UTF-8 text, and its size in bytes.
struct Decoded {
    char32_t character;
    std::size_t bytes;
};

Decoded characterAt(std::string_view text, std::size_t at)
{
    const auto byte = [&](std::size_t i) -> char32_t {
        return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) & 0x3F : 0;
    };
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80)
        return { first, 1 };
    if (first < 0xE0)
        return { static_cast<char32_t>((first & 0x1F) << 6) | byte(1), std::min<std::size_t>(2, text.size() - at) };
    if (first < 0xF0)
        return { static_cast<char32_t>((first & 0x0F) << 12) | byte(1) << 6 | byte(2),
            std::min<std::size_t>(3, text.size() - at) };
    return { static_cast<char32_t>((first & 0x07) << 18) | byte(1) << 12 | byte(2) << 6 | byte(3),
        std::min<std::size_t>(4, text.size() - at) };
}

char32_t characterBefore(std::string_view text, std::size_t at)
{
    if (at == 0)
        return ' ';
    do
        --at;
    while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80);
    return characterAt(text, at).character;
}

char32_t characterFrom(std::string_view text, std::size_t at)
{
    return at < text.size() ? characterAt(text, at).character : U' ';
}

// Returns whether the character is a digit or a letter of a script that puts spaces between words.
bool isOfWord(char32_t c)
{
    if (c < 0x80)
        return g_ascii_isalnum(static_cast<char>(c)) || c == '_';
    const bool isWithoutBlanks = (c >= 0xE00 && c <= 0xEFF) || (c >= 0x1000 && c <= 0x109F)
        || (c >= 0x1780 && c <= 0x17FF) || (c >= 0x2E80 && c <= 0xA4CF) || (c >= 0xF900 && c <= 0xFAFF)
        || (c >= 0xFF66 && c <= 0xFF9F) || c >= 0x20000;
    return !isWithoutBlanks && (g_unichar_isalnum(c) || isAccent(c) || c == 0xAD);
}

// Returns whether the character is a voiced or semi-voiced sound mark of kana.
bool isSoundMark(char32_t c)
{
    return c == 0x3099 || c == 0x309A;
}

bool isMark(char32_t c)
{
    return isAccent(c) || isSoundMark(c);
}

}

TextPattern::TextPattern(std::string_view pattern, WholeWords wholeWords)
    : _wholeWords(wholeWords)
{
    const std::string text = validUtf8(pattern);
    std::vector<char32_t> given;
    for (std::size_t at = 0; at < text.size();) {
        const auto [character, bytes] = characterAt(text, at);
        given.push_back(isBlank(character) ? U' ' : character);
        at += bytes;
    }
    _folding.ignoresCase = std::none_of(given.begin(), given.end(), isCapital);
    _folding.ignoresAccents = std::none_of(given.begin(), given.end(), hasAccents);
    for (const char32_t character : given) {
        const auto as = folded(character, _folding);
        for (std::size_t i = 0; i < as.count; ++i) {
            const bool isSecondBlank = as.characters[i] == ' ' && !_characters.empty() && _characters.back() == ' ';
            if (!isSecondBlank)
                _characters.push_back(as.characters[i]);
        }
    }
    if (std::all_of(_characters.begin(), _characters.end(), [](char32_t c) { return c == ' '; }))
        _characters.clear();
    _fallbacks.assign(_characters.size() + 1, 0);
    for (std::size_t i = 1, length = 0; i < _characters.size();) {
        if (_characters[i] == _characters[length])
            _fallbacks[++i] = ++length;
        else if (length > 0)
            length = _fallbacks[length];
        else
            ++i;
    }
}

// One pass over a text: compares the pattern with the folded characters of the text, without copying the text.
class TextPattern::Search {
public:
    Search(const TextPattern& pattern, std::string_view text, const std::function<bool(const TextMatch&)>& found)
        : _pattern(pattern)
        , _text(text)
        , _found(found)
        , _origins(pattern._characters.size())
    {
        for (std::size_t c = 0; c < _plain.size(); ++c)
            _plain[c] = folded(static_cast<char32_t>(c), pattern._folding).characters[0];
    }

    void run()
    {
        while (_at < _text.size() && !_isOver) {
            const auto [character, bytes] = characterAt(_text, _at);
            _origin = { _at, _place };
            _at += bytes;
            if (!isBlank(character))
                _place += character < 0x10000 ? 1 : 2;
            if (character == '\n')
                _matched = 0;
            else if (character < 0x80)
                compare(_plain[character]);
            else
                compareFolded(character);
        }
    }

private:
    struct Origin {
        std::size_t byte = 0;
        std::uint32_t place = 0;
    };

    void compareFolded(char32_t character)
    {
        const auto as = folded(character, _pattern._folding);
        for (std::size_t i = 0; i < as.count && !_isOver; ++i) {
            _restIsMark = i + 1 < as.count && isMark(as.characters[i + 1]);
            compare(as.characters[i]);
        }
        _restIsMark = false;
    }

    void compare(char32_t character)
    {
        // Spaces around invisible characters are treated as one space.
        if (character == ' ' && _last == ' ' && _matched > 0)
            return;
        _last = character;
        const auto& wanted = _pattern._characters;
        while (_matched > 0 && wanted[_matched] != character)
            _matched = _pattern._fallbacks[_matched];
        if (wanted[_matched] != character)
            return;
        _origins[_compared++ % _origins.size()] = _origin;
        if (++_matched == wanted.size()) {
            report(_origins[_compared % _origins.size()]);
            _matched = _pattern._fallbacks[_matched];
        }
    }

    void report(const Origin& first)
    {
        TextMatch match { first.byte, _at, first.place, _place };
        if (match.start < _lastEnd || _restIsMark)
            return;
        // Combining accents belong to the last letter of the match.
        while (match.endByte < _text.size()) {
            const auto [next, bytes] = characterAt(_text, match.endByte);
            if (isSoundMark(next))
                return;
            if (!isAccent(next))
                break;
            if (!_pattern._folding.ignoresAccents)
                return;
            match.endByte += bytes;
            match.end += next < 0x10000 ? 1 : 2;
        }
        if (_pattern._wholeWords == WholeWords::Yes && !isWholeWords(match))
            return;
        _lastEnd = match.end;
        _isOver = !_found(match);
    }

    bool isWholeWords(const TextMatch& match) const
    {
        const bool beginsWithin = isOfWord(characterFrom(_text, match.firstByte)) && goesOnBefore(match.firstByte);
        const bool endsWithin = isOfWord(characterBefore(_text, match.endByte)) && goesOnAfter(match.endByte);
        return !beginsWithin && !endsWithin;
    }

    static bool isApostrophe(char32_t c) { return c == '\'' || c == 0x2019; }

    bool goesOnBefore(std::size_t byte) const
    {
        const char32_t before = characterBefore(_text, byte);
        if (!isApostrophe(before))
            return isOfWord(before);
        return isOfWord(characterBefore(_text, byte - (before < 0x80 ? 1 : 3)));
    }

    bool goesOnAfter(std::size_t byte) const
    {
        const char32_t after = characterFrom(_text, byte);
        if (!isApostrophe(after))
            return isOfWord(after);
        return isOfWord(characterFrom(_text, byte + (after < 0x80 ? 1 : 3)));
    }

    const TextPattern& _pattern;
    std::string_view _text;
    const std::function<bool(const TextMatch&)>& _found;
    std::array<char32_t, 0x80> _plain {};
    std::size_t _at = 0;
    std::uint32_t _place = 0;
    std::size_t _matched = 0;
    char32_t _last = 0;
    Origin _origin;
    // A ring buffer with the positions of the last matched characters, as many as the pattern has.
    std::vector<Origin> _origins;
    std::size_t _compared = 0;
    std::uint32_t _lastEnd = 0;
    // True if a combining mark follows the compared character.
    bool _restIsMark = false;
    bool _isOver = false;
};

void TextPattern::search(std::string_view text, const std::function<bool(const TextMatch&)>& found) const
{
    if (!isEmpty())
        Search(*this, text, found).run();
}

}
