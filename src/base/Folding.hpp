#pragma once

#include <array>
#include <cstddef>

namespace pagora {

// What makes no difference between two texts.
struct Folding {
    bool ignoresCase = true;
    bool ignoresAccents = true;
    bool operator==(const Folding&) const = default;
};

// What a character is compared as.
struct FoldedCharacter {
    std::array<char32_t, 20> characters {};
    std::size_t count = 0;
};

// A blank for all kinds of blank; nothing for characters that are not seen, such as soft hyphens; plain quotation marks
// and hyphens for typographic ones; the letters of a ligature or of a form of a letter. A letter with accents becomes
// the letter and its accents, or the letter alone where accents are ignored. Any thread.
FoldedCharacter folded(char32_t character, const Folding& folding);

// Whether it is an accent, which `folded` leaves out where accents are ignored.
bool isAccent(char32_t character);
// Whether the character is a capital letter.
bool isCapital(char32_t character);
// Whether the letter, as it is, is compared as another one where accents are ignored.
bool hasAccents(char32_t character);

}
