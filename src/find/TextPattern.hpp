#pragma once

#include "base/Folding.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// Where a text was found.
struct TextMatch {
    // Bytes of the searched text.
    std::size_t firstByte = 0;
    std::size_t endByte = 0;
    // Places, as `ChapterText` counts them.
    std::uint32_t start = 0;
    std::uint32_t end = 0;
};

enum class WholeWords : bool { No, Yes };

// What is searched for. Case is ignored unless the pattern has a capital letter, accents unless it has one. Any thread
// once it is made.
class TextPattern {
public:
    // Bytes that are not UTF-8 count as replacement characters.
    TextPattern(std::string_view pattern, WholeWords wholeWords);

    // Whether there is nothing to search for: no pattern, blanks alone, or characters that are never seen.
    bool isEmpty() const { return _characters.empty(); }
    const Folding& folding() const { return _folding; }

    // Calls `found` for each match in the text, which is UTF-8, from its start on; matches do not overlap. Ends early
    // when `found` returns false. It takes memory for the pattern and time for the text.
    void search(std::string_view text, const std::function<bool(const TextMatch&)>& found) const;

private:
    class Search;

    Folding _folding;
    WholeWords _wholeWords;
    std::vector<char32_t> _characters;
    // For each length of what has matched, the length of the longest beginning of the pattern that is also its end.
    std::vector<std::size_t> _fallbacks;
};

}
