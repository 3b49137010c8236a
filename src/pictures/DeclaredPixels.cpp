#include "pictures/DeclaredPixels.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace pagora {

namespace {

enum class Order { LowFirst, HighFirst };

// Returns the number of `count` bytes at offset `at`; 0 past the end.
std::uint32_t number(std::string_view bytes, std::size_t at, std::size_t count, Order order)
{
    if (at > bytes.size() || bytes.size() - at < count)
        return 0;
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < count; ++i)
        result = result << 8 | static_cast<unsigned char>(bytes[at + (order == Order::HighFirst ? i : count - 1 - i)]);
    return result;
}

double area(std::uint32_t width, std::uint32_t height)
{
    return static_cast<double>(width) * height;
}

double pngPixels(std::string_view bytes)
{
    return area(number(bytes, 16, 4, Order::HighFirst), number(bytes, 20, 4, Order::HighFirst));
}

double bitmapPixels(std::string_view bytes)
{
    const auto at
        = [&](std::size_t offset, std::size_t count) { return number(bytes, offset, count, Order::LowFirst); };
    constexpr std::uint32_t shortHeader = 12;
    if (at(14, 4) == shortHeader)
        return area(at(18, 2), at(20, 2));
    // A negative height means rows from top to bottom.
    return area(at(18, 4), static_cast<std::uint32_t>(std::llabs(static_cast<std::int32_t>(at(22, 4)))));
}

// Blocks follow the screen descriptor. Each block except the trailer consists of sub-blocks that begin with their
// length.
double gifPixels(std::string_view bytes)
{
    const auto at
        = [&](std::size_t offset, std::size_t count) { return number(bytes, offset, count, Order::LowFirst); };
    const auto colourBytes = [](std::uint32_t flags) { return flags & 0x80 ? std::size_t { 6 } << (flags & 7) : 0; };
    double maxPixels = area(at(6, 2), at(8, 2));
    for (std::size_t i = 13 + colourBytes(at(10, 1)); i < bytes.size();) {
        const char kind = bytes[i];
        if (kind == ',') {
            maxPixels = std::max(maxPixels, area(at(i + 5, 2), at(i + 7, 2)));
            i += 11 + colourBytes(at(i + 9, 1));
        } else if (kind == '!') {
            i += 2;
        } else {
            // Decoders skip unknown bytes.
            ++i;
            continue;
        }
        while (const auto length = at(i, 1))
            i += 1 + length;
        ++i;
    }
    return maxPixels;
}

double webpPixels(std::string_view bytes)
{
    const auto at
        = [&](std::size_t offset, std::size_t count) { return number(bytes, offset, count, Order::LowFirst); };
    constexpr std::size_t chunkHeader = 8;
    double maxPixels = 0;
    for (std::size_t i = 12; i + chunkHeader <= bytes.size();) {
        const auto name = bytes.substr(i, 4);
        const auto length = std::size_t { at(i + 4, 4) };
        const auto data = i + chunkHeader;
        i = data + length + length % 2;
        if (name == "VP8X") {
            maxPixels = std::max(maxPixels, area(at(data + 4, 3) + 1, at(data + 7, 3) + 1));
        } else if (name == "VP8 ") {
            maxPixels = std::max(maxPixels, area(at(data + 6, 2) & 0x3FFF, at(data + 8, 2) & 0x3FFF));
        } else if (name == "VP8L") {
            const auto sides = at(data + 1, 4);
            maxPixels = std::max(maxPixels, area((sides & 0x3FFF) + 1, (sides >> 14 & 0x3FFF) + 1));
        } else if (name == "ANMF") {
            maxPixels = std::max(maxPixels, area(at(data + 6, 3) + 1, at(data + 9, 3) + 1));
            // The chunks of the frame come next.
            i = data + 16;
        }
    }
    return maxPixels;
}

double tiffPixels(std::string_view bytes)
{
    const auto order = bytes.starts_with("II") ? Order::LowFirst : Order::HighFirst;
    const auto at = [&](std::size_t offset, std::size_t count) { return number(bytes, offset, count, order); };
    enum Tag : std::uint32_t {
        Width = 256,
        Height = 257,
        SampleBits = 258,
        Samples = 277,
        TileWidth = 322,
        TileHeight = 323
    };
    std::uint32_t width = 0, height = 0, bits = 1, samples = 1, tileWidth = 0, tileHeight = 0;
    constexpr std::size_t entryBytes = 12;
    const std::size_t folder = at(4, 4);
    const auto entries = at(folder, 2);
    for (std::size_t i = folder + 2; i < folder + 2 + entries * entryBytes && i < bytes.size(); i += entryBytes) {
        constexpr std::uint32_t byteType = 1, shortType = 3;
        const auto type = at(i + 2, 2);
        const auto size = type == byteType ? 1 : type == shortType ? 2 : 4;
        const auto value = at(i + 8, static_cast<std::size_t>(size));
        switch (at(i, 2)) {
        case Width:
            width = std::max(width, value);
            break;
        case Height:
            height = std::max(height, value);
            break;
        // More than two values are stored at an offset. Decoders require them to be equal.
        case SampleBits:
            bits = std::max(bits, at(i + 4, 4) > 2 ? at(value, 2) : value);
            break;
        case Samples:
            samples = std::max(samples, value);
            break;
        case TileWidth:
            tileWidth = std::max(tileWidth, value);
            break;
        case TileHeight:
            tileHeight = std::max(tileHeight, value);
            break;
        default:
            break;
        }
    }
    constexpr double plainBits = 64;
    const auto weight = std::max(1.0, static_cast<double>(samples) * bits / plainBits);
    return weight * std::max(area(width, height), area(tileWidth, tileHeight));
}

// Sizes are in a list of properties that every item can refer to.
double avifPixels(std::string_view bytes)
{
    double maxPixels = 0;
    for (auto at = bytes.find("ispe"); at != std::string_view::npos; at = bytes.find("ispe", at + 1))
        maxPixels = std::max(
            maxPixels, area(number(bytes, at + 8, 4, Order::HighFirst), number(bytes, at + 12, 4, Order::HighFirst)));
    return maxPixels;
}

}

double declaredPixels(const ImageFormat& format, std::string_view bytes)
{
    const std::string_view name = format.name ? format.name : "";
    if (name == "png")
        return pngPixels(bytes);
    if (name == "bmp")
        return bitmapPixels(bytes);
    if (name == "gif")
        return gifPixels(bytes);
    if (name == "webp")
        return webpPixels(bytes);
    if (name == "tiff")
        return tiffPixels(bytes);
    return name == "avif" ? avifPixels(bytes) : 0;
}

}
