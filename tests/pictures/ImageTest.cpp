#include "pictures/Image.hpp"

#include "pictures/ImageFormat.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <gtest/gtest.h>

namespace pagora {

namespace {

using test::picture;

constexpr Size box { 106, 156 };

std::string svg(int width, int height, const std::string& content)
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='"
        + std::to_string(width) + "' height='" + std::to_string(height) + "'>" + content + "</svg>";
}

Size scaledSize(int width, int height)
{
    const auto image = Image::fromBytes(picture(width, height), box);
    const auto scaled = image ? image->imageByScalingProportionallyToSize(box) : std::nullopt;
    return scaled ? Size { static_cast<double>(gdk_pixbuf_get_width(scaled->pixbuf())),
        static_cast<double>(gdk_pixbuf_get_height(scaled->pixbuf())) }
                  : Size {};
}

std::vector<int> pixel(const Image& image, int x, int y)
{
    auto* pixbuf = image.pixbuf();
    const auto* at
        = gdk_pixbuf_read_pixels(pixbuf) + y * gdk_pixbuf_get_rowstride(pixbuf) + x * gdk_pixbuf_get_n_channels(pixbuf);
    return { at[0], at[1], at[2] };
}

}

TEST(Image, CoverIsScaledIntoTheBox)
{
    EXPECT_EQ(scaledSize(600, 800), (Size { 106, 141 }));
    EXPECT_EQ(scaledSize(1000, 1000), (Size { 106, 106 }));
}

TEST(Image, SmallCoverIsEnlarged)
{
    EXPECT_EQ(scaledSize(53, 78), box);
}

TEST(Image, SinglePrecisionProductIsTruncated)
{
    EXPECT_EQ(scaledSize(1400, 1873), (Size { 105, 141 }));
}

TEST(Image, CoverOfTheBoxKeepsItsSize)
{
    EXPECT_EQ(scaledSize(106, 156), box);
}

TEST(Image, SideThatWouldBeNothingGivesNoPicture)
{
    EXPECT_FALSE(Image::fromBytes(picture(2000, 1))->imageByScalingProportionallyToSize(box));
}

TEST(Image, ScalingKeepsTheColour)
{
    const auto scaled = Image::fromBytes(picture(1200, 1200, "png"))->imageByScalingProportionallyToSize(box);
    EXPECT_EQ(pixel(*scaled, 0, 0), (std::vector { 0x33, 0x66, 0x99 }));
    EXPECT_EQ(pixel(*scaled, 105, 105), (std::vector { 0x33, 0x66, 0x99 }));
}

TEST(Image, CommonFormatsDecode)
{
    for (const char* format : { "jpeg", "png", "bmp", "tiff" }) {
        const auto image = Image::fromBytes(picture(40, 30, format));
        ASSERT_TRUE(image) << format;
        EXPECT_EQ(image->size(), (Size { 40, 30 }));
    }
}

TEST(Image, GifDecodes)
{
    const std::string gif("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);
    const auto image = Image::fromBytes(gif);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size { 1, 1 }));
    EXPECT_EQ(pixel(*image, 0, 0), (std::vector { 255, 0, 0 }));
}

TEST(Image, WebPDecodes)
{
    const std::string webp("RIFF\x1A\0\0\0WEBPVP8L\x0D\0\0\0\x2F\0\0\0\x10\x07\x10\x11\x11\x88\x88\xFE\x07\0", 34);
    const auto image = Image::fromBytes(webp);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size { 1, 1 }));
}

TEST(Image, SvgDecodes)
{
    const auto image = Image::fromBytes(svg(300, 400, "<rect width='300' height='400' fill='red'/>"), box);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size { 300, 400 }));
    EXPECT_EQ(pixel(*image, 5, 5), (std::vector { 255, 0, 0 }));
}

TEST(Image, SvgReadsNothingThatItRefersTo)
{
    test::TemporaryFolder folder;
    const auto red = test::makeFile(folder.path("red.svg"), svg(10, 10, "<rect width='10' height='10' fill='red'/>"));
    const auto image = Image::fromBytes(svg(10, 10,
        "<rect width='10' height='10' fill='blue'/><image width='10' height='10' xlink:href='file://" + red
            + "'/><image width='10' height='10' xlink:href='red.svg'/>"));
    ASSERT_TRUE(image);
    EXPECT_EQ(pixel(*image, 5, 5), (std::vector { 0, 0, 255 }));
}

TEST(Image, LargeJpegIsDecodedAtAReducedSize)
{
    const auto image = Image::fromBytes(picture(30'000, 400), box);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size { 30'000, 400 }));
    EXPECT_EQ(gdk_pixbuf_get_width(image->pixbuf()), 15'000);
    EXPECT_EQ(gdk_pixbuf_get_height(image->pixbuf()), 200);
}

TEST(Image, LargeSvgIsDrawnAtAReducedSize)
{
    const auto image = Image::fromBytes(svg(30'000, 30'000, ""), box);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size { 30'000, 30'000 }));
    EXPECT_LE(gdk_pixbuf_get_width(image->pixbuf()), 300);
}

TEST(Image, PictureOfTooManyPixelsIsNone)
{
    std::string gif("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);
    ASSERT_TRUE(Image::fromBytes(gif));
    // The size of the picture, 30,000 by 30,000.
    gif.replace(6, 4, "\x30\x75\x30\x75");
    EXPECT_FALSE(Image::fromBytes(gif));
}

TEST(Image, BytesThatAreNoPictureAreNone)
{
    EXPECT_FALSE(Image::fromBytes(""));
    EXPECT_FALSE(Image::fromBytes("this is no picture"));
    EXPECT_FALSE(Image::fromBytes(picture(400, 300, "png").substr(0, 60)));
    EXPECT_FALSE(Image::fromBytes("\xFF\xD8\xFF"));
}

TEST(Image, BitmapWhoseHeaderIsLargerThanTheFileIsNone)
{
    auto bytes = picture(4, 3, "bmp");
    ASSERT_TRUE(isComplete(imageFormatOf(bytes), bytes));
    // A decoder would allocate the gigabyte that the header declares.
    bytes.replace(14, 4, "\x01\x0D\x49\x48");
    EXPECT_FALSE(isComplete(imageFormatOf(bytes), bytes));
    EXPECT_FALSE(Image::fromBytes(bytes));
    EXPECT_FALSE(Image::fromBytes("BM"));
}

TEST(Image, JpegHasTransparentPartsOnWhite)
{
    const auto bytes = Image::fromBytes(picture(32, 32, "png", 0))->jpegData(0.8);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->substr(0, 3), "\xFF\xD8\xFF");
    EXPECT_EQ(pixel(*Image::fromBytes(*bytes), 16, 16), (std::vector { 255, 255, 255 }));
}

}
