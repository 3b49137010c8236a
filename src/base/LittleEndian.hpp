#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pagora {

// Returns the little-endian number of `size` bytes at offset `at`. The caller checks that the bytes exist.
inline std::uint64_t littleEndian(std::string_view bytes, std::size_t at, int size)
{
    std::uint64_t number = 0;
    for (int i = size - 1; i >= 0; --i)
        number = number << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    return number;
}

// Overwrites the bytes at offset `at` with the number in little-endian order. The caller checks that the bytes exist.
inline void putLittleEndian(std::string& bytes, std::size_t at, std::uint64_t number, int size)
{
    for (int i = 0; i < size; ++i, number >>= 8)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(number & 0xFF);
}

}
