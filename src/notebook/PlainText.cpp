#include "notebook/PlainText.hpp"

#include <algorithm>
#include <cstddef>

namespace pagora {

namespace {

constexpr const char* replacement = "\xEF\xBF\xBD";
// U+2068 and U+2069.
constexpr const char* isolateStart = "\xE2\x81\xA8";
constexpr const char* isolateEnd = "\xE2\x81\xA9";

// Returns the length in bytes of the first character if it must be replaced; otherwise 0.
std::size_t controlLength(std::string_view text)
{
    const auto byte = [text](std::size_t at) {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : static_cast<unsigned char>(0);
    };
    if (byte(0) < 0x20 || byte(0) == 0x7F)
        return byte(0) == '\n' || byte(0) == '\t' ? 0 : 1;
    // U+0080 to U+009F.
    if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) <= 0x9F)
        return 2;
    // U+2028 to U+202E, U+2066 to U+206F.
    const bool turns
        = byte(1) == 0x80 ? byte(2) >= 0xA8 && byte(2) <= 0xAE : byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xAF;
    return byte(0) == 0xE2 && turns ? 3 : 0;
}

}

std::string plainText(std::string_view text)
{
    std::string plain;
    plain.reserve(text.size());
    while (!text.empty()) {
        const auto length = controlLength(text);
        if (length > 0)
            plain += replacement;
        else
            plain += text.front();
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return plain;
}

std::string isolatedText(std::string_view text)
{
    return isolateStart + plainText(text) + isolateEnd;
}

}
