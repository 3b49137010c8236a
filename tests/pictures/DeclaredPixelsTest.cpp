#include "pictures/DeclaredPixels.hpp"

#include "base/Bounds.hpp"
#include "pictures/Image.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

std::string low(std::uint64_t number, int count)
{
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(number >> 8 * i);
    return bytes;
}

double claims(const std::string& bytes)
{
    return declaredPixels(imageFormatOf(bytes), bytes);
}

bool isPastTheBound(const std::string& bytes)
{
    return claims(bytes) > static_cast<double>(PictureLimits().pixels) && !Image::fromBytes(bytes);
}

std::string gif(std::uint32_t screen, std::uint32_t frame, const std::string& between = {})
{
    const auto block = "," + low(0, 4) + low(frame, 2) + low(frame, 2) + std::string("\0\2\2D\1\0", 6);
    return "GIF89a" + low(screen, 2) + low(screen, 2) + std::string("\x80\0\0\xFF\0\0\0\0\0", 9) + between + block
        + ";";
}

std::string webp(const std::string& chunks)
{
    return "RIFF" + low(static_cast<std::uint32_t>(chunks.size() + 4), 4) + "WEBP" + chunks;
}

std::string chunk(const std::string& name, const std::string& data)
{
    return name + low(static_cast<std::uint32_t>(data.size()), 4) + data;
}

std::string losslessChunk(std::uint32_t side)
{
    return chunk("VP8L", "\x2F" + low((side - 1) | (side - 1) << 14, 4) + std::string(15, '\0'));
}

std::string tiff(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& tags)
{
    std::string bytes = std::string("II*\0", 4) + low(8, 4) + low(static_cast<std::uint32_t>(tags.size()), 2);
    for (const auto& [tag, value] : tags)
        bytes += low(tag, 2) + low(4, 2) + low(1, 4) + low(value, 4);
    return bytes + low(0, 4) + std::string(100, '\0');
}

}

TEST(DeclaredPixels, AreThePixelsOfAPlainPicture)
{
    for (const auto* format : { "png", "bmp", "tiff" })
        EXPECT_EQ(claims(test::picture(40, 30, format)), 1'200) << format;
    EXPECT_EQ(claims(gif(20, 20)), 400);
    EXPECT_EQ(claims(webp(losslessChunk(30))), 900);
}

TEST(DeclaredPixels, AreNotAskedOfFormatsThatAskThemselves)
{
    EXPECT_EQ(claims(test::picture(40, 30, "jpeg")), 0);
    EXPECT_EQ(claims("<svg xmlns='http://www.w3.org/2000/svg' width='40' height='30'/>"), 0);
    EXPECT_EQ(claims("no picture"), 0);
}

TEST(DeclaredPixels, OfAPngAreRefusedBeforeItsRowsAreUnpacked)
{
    auto png = test::picture(4, 3, "png");
    png.replace(16, 8, std::string("\0\0\x75\x30\0\0\x75\x30", 8));
    EXPECT_TRUE(isPastTheBound(png));
}

TEST(DeclaredPixels, OfABitmapCountRowsFromTheTopToo)
{
    auto bitmap = test::picture(4, 3, "bmp");
    bitmap.replace(18, 8, low(30'000, 4) + low(static_cast<std::uint32_t>(-30'000), 4));
    EXPECT_TRUE(isPastTheBound(bitmap));
}

TEST(DeclaredPixels, OfAGifCountAFrameLargerThanItsScreen)
{
    EXPECT_TRUE(Image::fromBytes(gif(1, 1)));
    EXPECT_TRUE(isPastTheBound(gif(1, 20'000)));
}

TEST(DeclaredPixels, OfAGifCountAFrameBehindOtherBlocksAndStrayBytes)
{
    const std::string comment("!\xFE\3abc\2de\0", 10);
    EXPECT_TRUE(isPastTheBound(gif(1, 20'000, comment)));
    EXPECT_TRUE(isPastTheBound(gif(1, 20'000, "stray" + comment)));
}

TEST(DeclaredPixels, OfAWebPCountItsCanvasItsBitsAndEveryFrame)
{
    const auto canvas
        = [](std::uint32_t side) { return chunk("VP8X", low(0, 4) + low(side - 1, 3) + low(side - 1, 3)); };
    const auto frame = [](std::uint32_t side, const std::string& bits) {
        return chunk("ANMF", low(0, 6) + low(side - 1, 3) + low(side - 1, 3) + low(0, 4) + bits);
    };
    const std::string lossy = chunk("VP8 ", std::string("\0\0\0\x9D\1\x2A", 6) + low(16'000, 2) + low(16'000, 2));
    EXPECT_TRUE(isPastTheBound(webp(losslessChunk(16'384))));
    EXPECT_TRUE(isPastTheBound(webp(lossy)));
    EXPECT_TRUE(isPastTheBound(webp(canvas(16'384) + losslessChunk(1))));
    EXPECT_TRUE(isPastTheBound(webp(canvas(1) + frame(1, losslessChunk(1)) + frame(16'384, losslessChunk(1)))));
    EXPECT_TRUE(isPastTheBound(webp(canvas(1) + frame(1, losslessChunk(16'384)))));
}

TEST(DeclaredPixels, OfATiffCountItsTilesAndManySamples)
{
    enum Tag : std::uint32_t {
        Width = 256,
        Height = 257,
        Bits = 258,
        Samples = 277,
        TileWidth = 322,
        TileHeight = 323
    };
    EXPECT_EQ(claims(tiff({ { Width, 40 }, { Height, 30 }, { Bits, 8 }, { Samples, 4 } })), 1'200);
    EXPECT_TRUE(isPastTheBound(tiff({ { Width, 60'000 }, { Height, 60'000 } })));
    EXPECT_TRUE(isPastTheBound(tiff({ { Width, 9 }, { Height, 9 }, { TileWidth, 60'000 }, { TileHeight, 60'000 } })));
    EXPECT_TRUE(isPastTheBound(tiff({ { Width, 4'000 }, { Height, 4'000 }, { Bits, 8 }, { Samples, 60'000 } })));
}

TEST(DeclaredPixels, OfAnAvifAreThoseOfAnyItem)
{
    const std::string picture
        = std::string("\0\0\0\x1C", 4) + "ftypavif" + std::string("....ispe\0\0\0\0\0\0\x75\x30\0\0\x75\x30", 20);
    EXPECT_TRUE(isPastTheBound(picture));
}

TEST(DeclaredPixels, OfHeadersThatBreakOffAreNone)
{
    for (const auto& whole : { gif(9, 9), webp(losslessChunk(9)), tiff({ { 256, 9 }, { 257, 9 } }),
             test::picture(9, 9, "png"), test::picture(9, 9, "bmp") }) {
        for (std::size_t length = 0; length <= whole.size(); ++length)
            EXPECT_LE(claims(whole.substr(0, length)), 81);
    }
}

}
