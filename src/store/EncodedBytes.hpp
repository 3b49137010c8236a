#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <string_view>

namespace pagora {

// The encoding of values: a version byte, then a value. A value is a tag and its content. A count is encoded in groups
// of 7 bits, lowest first; a text as its length and bytes.
constexpr char codingVersion = 1;

enum class Tag : std::uint8_t {
    String = 1,
    Integer,
    Real,
    False,
    True,
    Date,
    Data,
    DataApart,
    Array,
    Dictionary,
    ArrayApart,
    DictionaryApart
};

// Reads the parts of encoded values in order. Each operation returns nullopt at the end of the bytes or on malformed
// input.
class EncodedBytes {
public:
    explicit EncodedBytes(std::string_view bytes)
        : _left(bytes)
    {
    }

    std::string_view left() const { return _left; }
    bool isAtEnd() const { return _left.empty(); }

    std::optional<std::uint8_t> byte()
    {
        if (_left.empty())
            return std::nullopt;
        const auto byte = static_cast<std::uint8_t>(_left.front());
        _left.remove_prefix(1);
        return byte;
    }

    std::optional<std::uint64_t> count()
    {
        std::uint64_t count = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            const auto next = byte();
            if (!next || (shift == 63 && *next > 1))
                return std::nullopt;
            count |= std::uint64_t(*next & 0x7F) << shift;
            if (*next < 0x80)
                return count;
        }
        return std::nullopt;
    }

    std::optional<std::int64_t> signedNumber()
    {
        const auto bits = count();
        if (!bits)
            return std::nullopt;
        return static_cast<std::int64_t>(*bits & 1 ? ~(*bits >> 1) : *bits >> 1);
    }

    std::optional<std::string_view> text()
    {
        const auto length = count();
        if (!length || *length > _left.size())
            return std::nullopt;
        const auto text = _left.substr(0, *length);
        _left.remove_prefix(*length);
        return text;
    }

    std::optional<double> real()
    {
        if (_left.size() < 8)
            return std::nullopt;
        std::uint64_t bits = 0;
        for (int i = 7; i >= 0; --i)
            bits = bits << 8 | static_cast<std::uint8_t>(_left[i]);
        _left.remove_prefix(8);
        return std::bit_cast<double>(bits);
    }

private:
    std::string_view _left;
};

}
