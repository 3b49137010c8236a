#pragma once

#include <array>
#include <cstddef>

namespace pagora {

// The differences between texts that a comparison ignores.
struct Folding {
    bool ignoresCase = true;
    bool ignoresAccents = true;
    bool operator==(const Folding&) const = default;
};

// The characters that replace one character in a comparison.
struct FoldedCharacter {
    std::array<char32_t, 20> characters {};
    std::size_t count = 0;
};

// Folds one character for a comparison. Blanks of any kind become a space, typographic quotation marks and hyphens
// become plain ones, ligatures and letter forms become their letters, and invisible characters such as soft hyphens
// become nothing. An accented letter becomes the letter and its accents, or the letter alone if accents are ignored.
// Thread-safe.
FoldedCharacter folded(char32_t character, const Folding& folding);

// Returns whether the character is an accent, which `folded` removes if accents are ignored.
bool isAccent(char32_t character);
// Returns whether the character is a capital letter.
bool isCapital(char32_t character);
// Returns whether ignoring accents changes the letter, apart from its case.
bool hasAccents(char32_t character);

}
