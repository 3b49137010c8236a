#pragma once

#include "base/Folding.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace pagora {

// The position of a match.
struct TextMatch {
    // Byte offsets in the searched text.
    std::size_t firstByte = 0;
    std::size_t endByte = 0;
    // Places as in `ChapterText`.
    std::uint32_t start = 0;
    std::uint32_t end = 0;
};

enum class WholeWords : bool { No, Yes };

// A search pattern. Ignores case unless the pattern has a capital letter, and accents unless it has an accent.
// Immutable and thread-safe.
class TextPattern {
public:
    // Invalid UTF-8 is read as replacement characters.
    TextPattern(std::string_view pattern, WholeWords wholeWords);

    // Returns whether the pattern is empty or has only spaces and invisible characters.
    bool isEmpty() const { return _characters.empty(); }
    const Folding& folding() const { return _folding; }

    // Calls `found` for each match in the UTF-8 text, in order, until it returns false. Matches do not overlap. Memory
    // is linear in the pattern, time in the text.
    void search(std::string_view text, const std::function<bool(const TextMatch&)>& found) const;

private:
    class Search;

    Folding _folding;
    WholeWords _wholeWords;
    std::vector<char32_t> _characters;
    // Knuth-Morris-Pratt: for each matched length, the length of the longest proper prefix that is also a suffix.
    std::vector<std::size_t> _fallbacks;
};

}
