#include "xml/XmlScanner.hpp"

#include <limits>
#include <utility>

namespace pagora {

void XmlScanner::begin(std::string_view start)
{
    using namespace std::string_view_literals;
    const bool highestFirst4 = start.starts_with("\0\0\0<"sv) || start.starts_with("\0\0\xFE\xFF"sv);
    const bool lowestFirst4 = start.starts_with("<\0\0\0"sv) || start.starts_with("\xFF\xFE\0\0"sv);
    const bool highestFirst2 = start.starts_with("\0<"sv) || start.starts_with("\xFE\xFF"sv);
    const bool lowestFirst2 = start.starts_with("<\0"sv) || start.starts_with("\xFF\xFE"sv);
    if (highestFirst4 || lowestFirst4)
        _characterBytes = 4;
    else if (highestFirst2 || lowestFirst2)
        _characterBytes = 2;
    _lowestFirst = _characterBytes == 1 || (_characterBytes == 4 ? lowestFirst4 : lowestFirst2);
    count(start, std::numeric_limits<std::size_t>::max());
}

bool XmlScanner::count(std::string_view bytes, std::size_t limit)
{
    for (const char c : bytes) {
        _bytesOfDocumentType += _hasDocumentType ? 1 : 0;
        const auto byte = static_cast<std::uint32_t>(static_cast<unsigned char>(c));
        _character = _lowestFirst ? _character | byte << 8 * _place : _character << 8 | byte;
        if (++_place < _characterBytes)
            continue;
        if (!countCharacter(_character, limit))
            return false;
        _place = 0;
        _character = 0;
    }
    return true;
}

bool XmlScanner::countCharacter(std::uint32_t c, std::size_t limit)
{
    _hasDocumentType = _hasDocumentType || (c == 'D' && _last == '!' && _lastButOne == '<');
    _lastButOne = std::exchange(_last, c);
    if (c == '<')
        _attributes = 0;
    else if ((c == '"' || c == '\'') && _afterEquals && ++_attributes > limit)
        return false;
    if (c == '=')
        _afterEquals = true;
    else if (c != '\0' && c != ' ' && c != '\t' && c != '\n' && c != '\r')
        _afterEquals = false;
    return true;
}

}
