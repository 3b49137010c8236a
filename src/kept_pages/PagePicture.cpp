#include "kept_pages/PagePicture.hpp"

#include "base/GObjectPtr.hpp"

#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <unordered_map>
#include <utility>

namespace pagora {

namespace {

// The file format: a line of text, texts with the lengths that the line states, and a zlib stream. The stream contains
// the list of colours and one byte for each pixel. If the picture has more colours than a byte can number, the stream
// contains the pixels and no list.
constexpr std::string_view firstWord = "pagora-page-1";
constexpr std::size_t maxHeadBytes = 200;
constexpr std::size_t maxColors = 256;
constexpr std::size_t maxTextBytes = 20'000;
constexpr std::size_t pixelBytes = 4;
// Fast enough for a page in 20 ms. Higher levels save only a tenth of the bytes.
constexpr int compression = 6;

struct Head {
    int width = 0;
    int height = 0;
    int scale = 0;
    std::size_t colors = 0;
    std::size_t keyBytes = 0;
    std::size_t conditionsBytes = 0;
    std::size_t paperBytes = 0;

    std::size_t pixels() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
    std::size_t textBytes() const { return keyBytes + conditionsBytes + paperBytes; }
    std::size_t streamBytes() const { return colors > 0 ? colors * pixelBytes + pixels() : pixels() * pixelBytes; }
};

bool isAllowed(const Head& head)
{
    constexpr int maxSide = 1 << 14;
    const bool hasSize
        = head.width > 0 && head.height > 0 && head.width <= maxSide && head.height <= maxSide && head.scale > 0;
    const auto isShort = [](std::size_t bytes) { return bytes <= maxTextBytes; };
    return hasSize && head.pixels() <= maxPagePixels && head.colors <= maxColors && isShort(head.keyBytes)
        && isShort(head.conditionsBytes) && isShort(head.paperBytes);
}

// Returns the converter's output; nullopt if it fails or is longer than `limit`.
std::optional<std::string> converted(GConverter* converter, std::string_view input, std::size_t limit)
{
    std::string output(limit + 1, '\0');
    std::size_t read = 0;
    std::size_t written = 0;
    GConverterResult result = G_CONVERTER_CONVERTED;
    while (result == G_CONVERTER_CONVERTED && written <= limit) {
        gsize taken = 0;
        gsize given = 0;
        GError* problem = nullptr;
        result = g_converter_convert(converter, input.data() + read, input.size() - read, output.data() + written,
            output.size() - written, G_CONVERTER_INPUT_AT_END, &taken, &given, &problem);
        g_clear_error(&problem);
        read += taken;
        written += given;
    }
    if (result != G_CONVERTER_FINISHED || written > limit || read != input.size())
        return std::nullopt;
    output.resize(written);
    return output;
}

std::uint32_t pixelAt(const char* bytes)
{
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, bytes, sizeof pixel);
    return pixel;
}

// Returns the colours, and the number of each pixel's colour; nullopt if there are too many colours.
std::optional<std::pair<std::string, std::string>> numberedColors(const std::string& pixels)
{
    std::unordered_map<std::uint32_t, unsigned char> numbers;
    std::string colors;
    std::string indices(pixels.size() / pixelBytes, '\0');
    std::uint32_t last = 0;
    unsigned char number = 0;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const char* const bytes = pixels.data() + i * pixelBytes;
        const auto pixel = pixelAt(bytes);
        if (numbers.empty() || pixel != last) {
            const auto [found, isNew] = numbers.try_emplace(pixel, static_cast<unsigned char>(numbers.size()));
            if (isNew && numbers.size() > maxColors)
                return std::nullopt;
            if (isNew)
                colors.append(bytes, pixelBytes);
            last = pixel;
            number = found->second;
        }
        indices[i] = static_cast<char>(number);
    }
    return std::pair(std::move(colors), std::move(indices));
}

std::optional<std::string> pixelsOf(const Head& head, std::string stream)
{
    if (head.colors == 0)
        return stream;
    std::array<std::uint32_t, maxColors> colors {};
    std::memcpy(colors.data(), stream.data(), head.colors * pixelBytes);
    std::string pixels(head.pixels() * pixelBytes, '\0');
    const char* const indices = stream.data() + head.colors * pixelBytes;
    for (std::size_t i = 0; i < head.pixels(); ++i) {
        const auto index = static_cast<unsigned char>(indices[i]);
        if (index >= head.colors)
            return std::nullopt;
        std::memcpy(pixels.data() + i * pixelBytes, &colors[index], pixelBytes);
    }
    return pixels;
}

}

std::optional<std::string> encodedPage(const PagePicture& picture, std::string_view key)
{
    Head head { picture.width, picture.height, picture.scale, 0, key.size(), picture.conditions.size(),
        picture.paper.size() };
    if (!isAllowed(head) || picture.pixels.size() != head.pixels() * pixelBytes)
        return std::nullopt;
    auto numbered = numberedColors(picture.pixels);
    if (numbered)
        head.colors = numbered->first.size() / pixelBytes;
    std::ostringstream file;
    file.imbue(std::locale::classic());
    file << firstWord << ' ' << head.width << ' ' << head.height << ' ' << head.scale << ' ' << head.colors << ' '
         << head.keyBytes << ' ' << head.conditionsBytes << ' ' << head.paperBytes << '\n'
         << key << picture.conditions << picture.paper;
    auto bytes = file.str();
    if (bytes.size() >= maxPageFileBytes)
        return std::nullopt;
    const auto compressor
        = GObjectPtr<GZlibCompressor>::adopt(g_zlib_compressor_new(G_ZLIB_COMPRESSOR_FORMAT_ZLIB, compression));
    const auto stream = converted(G_CONVERTER(compressor.get()),
        numbered ? numbered->first + numbered->second : picture.pixels, maxPageFileBytes - bytes.size());
    if (!stream)
        return std::nullopt;
    return bytes + *stream;
}

std::optional<PagePicture> decodedPage(std::string_view bytes, std::string_view key)
{
    const auto end = bytes.substr(0, maxHeadBytes).find('\n');
    if (bytes.size() > maxPageFileBytes || end == std::string_view::npos)
        return std::nullopt;
    std::istringstream words { std::string(bytes.substr(0, end)) };
    words.imbue(std::locale::classic());
    std::string word;
    Head head;
    words >> word >> head.width >> head.height >> head.scale >> head.colors >> head.keyBytes >> head.conditionsBytes
        >> head.paperBytes;
    bytes.remove_prefix(end + 1);
    if (!words || word != firstWord || !isAllowed(head) || bytes.size() < head.textBytes())
        return std::nullopt;
    const auto take = [&bytes](std::size_t count) {
        const auto text = bytes.substr(0, count);
        bytes.remove_prefix(count);
        return text;
    };
    if (take(head.keyBytes) != key)
        return std::nullopt;
    PagePicture picture { head.width, head.height, head.scale, std::string(take(head.conditionsBytes)),
        std::string(take(head.paperBytes)), {} };
    const auto decompressor
        = GObjectPtr<GZlibDecompressor>::adopt(g_zlib_decompressor_new(G_ZLIB_COMPRESSOR_FORMAT_ZLIB));
    auto stream = converted(G_CONVERTER(decompressor.get()), bytes, head.streamBytes());
    if (!stream || stream->size() != head.streamBytes())
        return std::nullopt;
    auto pixels = pixelsOf(head, std::move(*stream));
    if (!pixels)
        return std::nullopt;
    picture.pixels = std::move(*pixels);
    return picture;
}

}
