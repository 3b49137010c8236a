#include "benches/data/MadePictures.hpp"

#include <array>
#include <cmath>
#include <cstdlib>
#include <jpeglib.h>
#include <vector>

namespace pagora::bench {

namespace {

constexpr std::size_t differentCovers = 24;
constexpr int coverQuality = 82;
constexpr int smallCoverQuality = 80;

using Covers = std::array<std::string, differentCovers>;

using Colour = std::array<double, 3>;

// Returns the change of colour along a side.
std::vector<Colour> wave(int length, MadeText& random)
{
    Colour turns {};
    for (auto& turn : turns)
        turn = 2 + static_cast<double>(random.number(200)) / 10;
    std::vector<Colour> wave(static_cast<std::size_t>(length));
    for (std::size_t i = 0; i < wave.size(); ++i) {
        for (std::size_t c = 0; c < turns.size(); ++c)
            wave[i].at(c) = 50 * std::sin(turns.at(c) * static_cast<double>(i) / length + static_cast<double>(c));
    }
    return wave;
}

Covers makeCovers(int width, int height, int quality)
{
    Covers covers;
    for (std::size_t i = 0; i < covers.size(); ++i) {
        MadeText random(i + 1);
        covers.at(i) = madePicture(width, height, quality, random);
    }
    return covers;
}

}

std::string madePicture(int width, int height, int quality, MadeText& random)
{
    constexpr std::size_t grain = 13;
    const auto across = wave(width, random);
    const auto down = wave(height, random);
    std::vector<unsigned char> row(static_cast<std::size_t>(width) * 3);

    jpeg_compress_struct jpeg {};
    jpeg_error_mgr errors {};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = static_cast<JDIMENSION>(width);
    jpeg.image_height = static_cast<JDIMENSION>(height);
    jpeg.input_components = 3;
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, quality, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    while (jpeg.next_scanline < jpeg.image_height) {
        const auto& atLine = down[jpeg.next_scanline];
        for (std::size_t x = 0; x < across.size(); ++x) {
            const auto noise = static_cast<double>(random.number(grain));
            for (std::size_t c = 0; c < 3; ++c)
                row[x * 3 + c] = static_cast<unsigned char>(120 + across[x].at(c) + atLine.at(c) + noise);
        }
        JSAMPROW rows[] = { row.data() };
        jpeg_write_scanlines(&jpeg, rows, 1);
    }
    jpeg_finish_compress(&jpeg);
    std::string made(reinterpret_cast<const char*>(bytes), size);
    jpeg_destroy_compress(&jpeg);
    std::free(bytes);
    return made;
}

const std::string& madeCover(std::size_t number)
{
    static const Covers covers = makeCovers(900, 1400, coverQuality);
    return covers.at(number % differentCovers);
}

const std::string& madeSmallCover(std::size_t number)
{
    static const Covers covers = makeCovers(100, 156, smallCoverQuality);
    return covers.at(number % differentCovers);
}

std::string paddedPicture(std::size_t size, MadeText& random)
{
    auto bytes = madePicture(160, 120, coverQuality, random);
    if (bytes.size() < size)
        bytes += random.noise(size - bytes.size());
    return bytes;
}

}
