#include "epub/KnownNames.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace pagora {

namespace {

constexpr std::string_view separator = " ## ";
constexpr std::size_t pieceBytes = 8;
// A shorter text is searched directly.
constexpr std::size_t shortText = 4'096;
constexpr std::size_t bitsPerWord = 64;
constexpr std::size_t bitsPerPiece = 8;

std::uint64_t wordAt(const char* bytes)
{
    std::uint64_t word;
    static_assert(sizeof word == pieceBytes);
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

}

KnownNames::KnownNames(std::string text)
    : _text(std::move(text))
{
    if (_text.size() <= shortText)
        return;
    const std::string_view all = _text;
    for (std::size_t start = 0; start <= all.size();) {
        const auto end = std::min(all.find(separator, start), all.size());
        const auto location = all.substr(start, end - start);
        _names.insert(location.substr(location.rfind('/') + 1));
        start = end + separator.size();
    }
    readPieces();
}

void KnownNames::readPieces()
{
    _pieces.resize(std::bit_ceil(_text.size() * bitsPerPiece / bitsPerWord));
    for (std::size_t i = 0; i + pieceBytes <= _text.size(); ++i) {
        const auto bit = bitOf(_text.data() + i);
        _pieces[bit / bitsPerWord] |= std::uint64_t { 1 } << bit % bitsPerWord;
    }
}

std::size_t KnownNames::bitOf(const char* piece) const
{
    constexpr std::uint64_t odd = 0x9E3779B97F4A7C15;
    const auto bits = static_cast<unsigned>(std::countr_zero(_pieces.size() * bitsPerWord));
    return wordAt(piece) * odd >> (bitsPerWord - bits);
}

bool KnownNames::hold(std::string_view name) const
{
    if (_names.contains(name))
        return true;
    for (std::size_t i = 0; !_pieces.empty() && i + pieceBytes <= name.size(); ++i) {
        const auto bit = bitOf(name.data() + i);
        if (!(_pieces[bit / bitsPerWord] >> bit % bitsPerWord & 1))
            return false;
    }
    return ::memmem(_text.data(), _text.size(), name.data(), name.size()) != nullptr;
}

}
