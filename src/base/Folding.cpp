#include "base/Folding.hpp"

#include <glib.h>

#include <algorithm>
#include <array>

namespace pagora {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Combining marks of scripts that are also read without them. Vowel signs of other scripts are letters and are not
// listed.
constexpr std::array<Range, 17> accents
    = { { { 0x300, 0x36F }, { 0x483, 0x487 }, { 0x591, 0x5BD }, { 0x5BF, 0x5BF }, { 0x5C1, 0x5C2 }, { 0x5C4, 0x5C5 },
        { 0x5C7, 0x5C7 }, { 0x610, 0x61A }, { 0x64B, 0x65F }, { 0x670, 0x670 }, { 0x6D6, 0x6DC }, { 0x6DF, 0x6E8 },
        { 0x6EA, 0x6ED }, { 0x1AB0, 0x1AFF }, { 0x1DC0, 0x1DFF }, { 0x20D0, 0x20FF }, { 0xFE20, 0xFE2F } } };

// A letter without a Unicode decomposition, and the letters that replace it when accents are ignored.
struct Relative {
    char32_t letter;
    const char* plain;
};
constexpr std::array<Relative, 19> relatives
    = { { { 0xC6, "AE" }, { 0xD0, "D" }, { 0xD8, "O" }, { 0xDE, "TH" }, { 0xE6, "ae" }, { 0xF0, "d" }, { 0xF8, "o" },
        { 0xFE, "th" }, { 0x110, "D" }, { 0x111, "d" }, { 0x126, "H" }, { 0x127, "h" }, { 0x131, "i" }, { 0x141, "L" },
        { 0x142, "l" }, { 0x152, "OE" }, { 0x153, "oe" }, { 0x166, "T" }, { 0x167, "t" } } };

const char* relativeOf(char32_t character)
{
    const auto* const found = std::lower_bound(relatives.begin(), relatives.end(), character,
        [](const Relative& relative, char32_t wanted) { return relative.letter < wanted; });
    return found != relatives.end() && found->letter == character ? found->plain : nullptr;
}

bool isUnseen(char32_t c)
{
    return c == 0xAD || c == 0x34F || c == 0x61C || c == 0x640 || (c >= 0x180B && c <= 0x180E)
        || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F)
        || (c >= 0xFE00 && c <= 0xFE0F) || c == 0xFEFF;
}

// Returns the plain form of a blank, quotation mark or hyphen; 0 for any other character.
char32_t plainSign(char32_t c)
{
    if (c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F
        || c == 0x205F || c == 0x3000)
        return ' ';
    if (c == 0x2018 || c == 0x2019 || c == 0x201A || c == 0x201B || c == 0x2BC || c == 0x2032)
        return '\'';
    if (c >= 0x201C && c <= 0x201F)
        return '"';
    if (c >= 0x2010 && c <= 0x2014)
        return '-';
    return 0;
}

bool isHangulSyllable(char32_t c)
{
    return c >= 0xAC00 && c <= 0xD7A3;
}

bool isIdeograph(char32_t c)
{
    return (c >= 0x3400 && c <= 0x9FFF) || (c >= 0x20000 && c <= 0x2F7FF);
}

class Builder {
public:
    explicit Builder(const Folding& folding)
        : _folding(folding)
    {
    }

    void add(char32_t c)
    {
        if (_folding.ignoresAccents && isAccent(c))
            return;
        if (_folding.ignoresAccents) {
            if (const auto* plain = relativeOf(c)) {
                for (; *plain; ++plain)
                    addLetter(static_cast<unsigned char>(*plain));
                return;
            }
        }
        addLetter(c);
    }

    FoldedCharacter result;

private:
    void addLetter(char32_t c)
    {
        if (!_folding.ignoresCase)
            return put(c);
        if (c == 0xDF || c == 0x1E9E) {
            put('s');
            put('s');
        } else
            put(c == 0x3C2 ? 0x3C3 : static_cast<char32_t>(g_unichar_tolower(c)));
    }

    void put(char32_t c)
    {
        if (result.count < result.characters.size())
            result.characters[result.count++] = c;
    }

    const Folding& _folding;
};

}

bool isAccent(char32_t character)
{
    const auto* const after = std::upper_bound(accents.begin(), accents.end(), character,
        [](char32_t wanted, const Range& range) { return wanted < range.first; });
    return after != accents.begin() && character <= std::prev(after)->last;
}

bool isCapital(char32_t character)
{
    return static_cast<char32_t>(g_unichar_tolower(character)) != character;
}

FoldedCharacter folded(char32_t character, const Folding& folding)
{
    Builder builder(folding);
    if (isUnseen(character))
        return builder.result;
    if (const char32_t plain = plainSign(character)) {
        builder.add(plain);
        return builder.result;
    }
    if (character < 0x80 || isIdeograph(character) || isHangulSyllable(character)) {
        builder.add(character);
        return builder.result;
    }
    std::array<gunichar, 18> parts {};
    const auto count
        = std::min<std::size_t>(g_unichar_fully_decompose(character, TRUE, parts.data(), parts.size()), parts.size());
    for (std::size_t i = 0; i < count; ++i) {
        const char32_t plain = plainSign(parts[i]);
        builder.add(plain ? plain : parts[i]);
    }
    return builder.result;
}

bool hasAccents(char32_t character)
{
    const Folding exact { false, false };
    const Folding loose { false, true };
    const auto one = folded(character, exact);
    const auto other = folded(character, loose);
    return one.count != other.count
        || !std::equal(one.characters.begin(), one.characters.begin() + one.count, other.characters.begin());
}

}
