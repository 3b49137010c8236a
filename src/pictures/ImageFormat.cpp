#include "pictures/ImageFormat.hpp"

#include <array>

namespace pagora {

namespace {

struct Signature {
    std::string_view bytes;
    std::size_t offset;
    ImageFormat format;
};

constexpr std::array<Signature, 9> signatures { {
    { "\xFF\xD8\xFF", 0, { "jpeg", true } },
    { "\x89PNG\r\n\x1A\n", 0, { "png", false } },
    { "GIF87a", 0, { "gif", false } },
    { "GIF89a", 0, { "gif", false } },
    { "WEBP", 8, { "webp", false } },
    { "ftypavif", 4, { "avif", false } },
    { "BM", 0, { "bmp", false } },
    { { "II*\0", 4 }, 0, { "tiff", false } },
    { { "MM\0*", 4 }, 0, { "tiff", false } },
} };

bool isSvg(std::string_view bytes)
{
    bytes = bytes.substr(0, 1 << 16);
    const auto start = bytes.find_first_not_of("\xEF\xBB\xBF \t\r\n");
    return start != std::string_view::npos && bytes[start] == '<'
        && (bytes.find("<svg") != std::string_view::npos
            || bytes.find("http://www.w3.org/2000/svg") != std::string_view::npos);
}

// Returns the size of the file header and of the info header, which begins with its length.
std::uint64_t bitmapHeaderBytes(std::string_view bytes)
{
    constexpr std::size_t fileHeaderBytes = 14;
    std::uint64_t length = 0;
    for (std::size_t i = fileHeaderBytes + 4; i-- > fileHeaderBytes;)
        length = length << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0xFFu);
    return fileHeaderBytes + length;
}

}

ImageFormat imageFormatOf(std::string_view bytes)
{
    for (const auto& signature : signatures) {
        if (bytes.size() > signature.offset && bytes.substr(signature.offset).starts_with(signature.bytes))
            return signature.format;
    }
    return isSvg(bytes) ? ImageFormat { "svg", true } : ImageFormat {};
}

bool isComplete(const ImageFormat& format, std::string_view bytes)
{
    const auto is = [&](std::string_view name) { return format.name == name; };
    if (is("png"))
        return bytes.find("IEND") != std::string_view::npos;
    if (is("bmp"))
        return bitmapHeaderBytes(bytes) <= bytes.size();
    return true;
}

bool isProgressiveJpeg(std::string_view bytes)
{
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    // Walks the segments, each a marker and a length, to the frame header, which names the coding process.
    for (std::size_t i = 2; i + 3 < bytes.size() && at(i) == 0xFF;) {
        const auto marker = at(i + 1);
        if (marker == 0xFF) {
            ++i;
            continue;
        }
        const bool codes = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (codes)
            return marker != 0xC0 && marker != 0xC1;
        i += 2 + (static_cast<std::size_t>(at(i + 2)) << 8 | at(i + 3));
    }
    return true;
}

}
