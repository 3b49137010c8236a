#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// A document's text with positions in three units: bytes, Unicode characters, and places. Places are UTF-16 units
// without white space, as in `ChapterText`. Thread-safe.
class ChapterUnits {
public:
    // `text` is UTF-8.
    explicit ChapterUnits(std::string text);

    // Returns the text without white space.
    const std::u16string& units() const { return _units; }
    std::uint32_t size() const { return static_cast<std::uint32_t>(_units.size()); }
    // Returns the first place at or after that character.
    std::uint32_t placeOf(std::size_t character) const;
    // Returns the number of characters before a place, including white space.
    std::size_t characterAt(std::uint32_t place) const;
    // Returns the text between two places, trimmed, in one line.
    std::string between(std::uint32_t start, std::uint32_t end) const;
    // Returns at most `count` characters before and after a place, in one line.
    std::string before(std::uint32_t place, std::size_t count) const;
    std::string after(std::uint32_t place, std::size_t count) const;
    // Returns at most `count` characters from a place on, without leading white space.
    std::string from(std::uint32_t place, std::size_t count) const;

private:
    // Returns the byte offset after the unit before the place.
    std::size_t endOf(std::uint32_t place) const;
    std::string charactersFrom(std::size_t byte, std::size_t count) const;

    std::string _text;
    std::u16string _units;
    // The byte and character offset of each unit.
    std::vector<std::uint32_t> _bytes;
    std::vector<std::uint32_t> _characters;
};

// Returns the units of a text, without white space.
std::u16string unitsOf(std::string_view text);

}
