#include "marks/ChapterUnits.hpp"

#include "base/Unicode.hpp"
#include "find/ChapterText.hpp"

#include <glib.h>

#include <algorithm>

namespace pagora {

namespace {

template <typename Take>
void forEachUnit(std::string_view text, Take take)
{
    std::uint32_t character = 0;
    for (std::size_t at = 0; at < text.size(); ++character) {
        const char32_t c = g_utf8_get_char(text.data() + at);
        if (!isBlank(c)) {
            if (c >= 0x10000)
                take(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)), at, character);
            take(static_cast<char16_t>(c < 0x10000 ? c : 0xDC00 + (c & 0x3FF)), at, character);
        }
        at += static_cast<unsigned char>(g_utf8_skip[static_cast<unsigned char>(text[at])]);
    }
}

std::string inOneLine(std::string_view text)
{
    std::string line(text);
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

}

ChapterUnits::ChapterUnits(std::string text)
    : _text(isUtf8(text) ? std::move(text) : validUtf8(text))
{
    _units.reserve(_text.size());
    _bytes.reserve(_text.size());
    _characters.reserve(_text.size());
    forEachUnit(_text, [this](char16_t unit, std::size_t byte, std::uint32_t character) {
        _units += unit;
        _bytes.push_back(static_cast<std::uint32_t>(byte));
        _characters.push_back(character);
    });
}

std::uint32_t ChapterUnits::placeOf(std::size_t character) const
{
    const auto found = std::lower_bound(_characters.begin(), _characters.end(), character);
    return static_cast<std::uint32_t>(found - _characters.begin());
}

std::size_t ChapterUnits::characterAt(std::uint32_t place) const
{
    if (place < _characters.size())
        return _characters[place];
    return _characters.empty() ? 0 : _characters.back() + 1;
}

std::size_t ChapterUnits::endOf(std::uint32_t place) const
{
    if (place == 0 || _bytes.empty())
        return 0;
    const auto last = _bytes[std::min<std::size_t>(place, _bytes.size()) - 1];
    return last + static_cast<unsigned char>(g_utf8_skip[static_cast<unsigned char>(_text[last])]);
}

std::string ChapterUnits::between(std::uint32_t start, std::uint32_t end) const
{
    if (start >= end || start >= _bytes.size())
        return {};
    return inOneLine(std::string_view(_text).substr(_bytes[start], endOf(end) - _bytes[start]));
}

std::string ChapterUnits::before(std::uint32_t place, std::size_t count) const
{
    const std::size_t end = place < _bytes.size() ? _bytes[place] : endOf(place);
    std::size_t start = end;
    for (; count > 0 && start > 0; --count) {
        do {
            --start;
        } while (start > 0 && (static_cast<unsigned char>(_text[start]) & 0xC0) == 0x80);
    }
    return inOneLine(std::string_view(_text).substr(start, end - start));
}

std::string ChapterUnits::after(std::uint32_t place, std::size_t count) const
{
    return charactersFrom(endOf(place), count);
}

std::string ChapterUnits::from(std::uint32_t place, std::size_t count) const
{
    return charactersFrom(place < _bytes.size() ? _bytes[place] : _text.size(), count);
}

std::string ChapterUnits::charactersFrom(std::size_t start, std::size_t count) const
{
    std::size_t end = start;
    for (; count > 0 && end < _text.size(); --count)
        end += static_cast<unsigned char>(g_utf8_skip[static_cast<unsigned char>(_text[end])]);
    return inOneLine(std::string_view(_text).substr(start, end - start));
}

std::u16string unitsOf(std::string_view text)
{
    const std::string valid = validUtf8(text);
    std::u16string units;
    forEachUnit(valid, [&units](char16_t unit, std::size_t, std::uint32_t) { units += unit; });
    return units;
}

}
