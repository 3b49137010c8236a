#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pagora {

// The number of `size` bytes at `at`, with its lowest byte first. The bytes have to be there.
inline std::uint64_t littleEndian(std::string_view bytes, std::size_t at, int size)
{
    std::uint64_t number = 0;
    for (int i = size - 1; i >= 0; --i)
        number = number << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    return number;
}

// Writes a number in the same way over the bytes at `at`.
inline void putLittleEndian(std::string& bytes, std::size_t at, std::uint64_t number, int size)
{
    for (int i = 0; i < size; ++i, number >>= 8)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(number & 0xFF);
}

}
