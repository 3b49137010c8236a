#include "pictures/PictureProcess.hpp"

#include "pictures/Image.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <glib.h>

#include <gtest/gtest.h>
#include <thread>

namespace pagora {

namespace {

constexpr Size box { 106, 156 };

std::string svg(const std::string& content)
{
    return "<svg xmlns='http://www.w3.org/2000/svg' width='100' height='150'>" + content + "</svg>";
}

// Returns an element that expands to 10^`depth` elements.
std::string manyTimes(int depth)
{
    std::string content = "<g id='a0'><rect width='1' height='1'/></g>";
    for (int i = 1; i <= depth; ++i) {
        content += "<g id='a" + std::to_string(i) + "'>";
        for (int k = 0; k < 10; ++k)
            content += "<use href='#a" + std::to_string(i - 1) + "'/>";
        content += "</g>";
    }
    return content;
}

}

TEST(PictureProcess, GivesTheSamePixelsAsDecodingHere)
{
    const auto picture = svg("<rect width='50' height='90' fill='red'/><circle r='40' cx='60' cy='60' opacity='0.5'/>");
    const auto apart = Image::fromBytes(picture, box);
    const auto here = Image::fromBytesInProcess(picture, box);
    ASSERT_TRUE(apart && here);
    EXPECT_EQ(apart->size(), here->size());
    EXPECT_EQ(apart->jpegData(1), here->jpegData(1));
}

TEST(PictureProcess, DecodesThePicturesOfSeveralThreads)
{
    std::vector<std::optional<Image>> images(4);
    std::vector<std::thread> threads;
    threads.reserve(images.size());
    for (auto& image : images)
        threads.emplace_back([&image] { image = Image::fromBytes(svg("<rect width='9' height='9'/>"), box); });
    for (auto& thread : threads)
        thread.join();
    for (const auto& image : images)
        EXPECT_TRUE(image);
}

TEST(PictureProcess, PictureWithoutEndIsGivenUp)
{
    // Later versions of the library limit the octaves of a step, but not the steps.
    std::string steps;
    for (int i = 0; i < 5000; ++i)
        steps += "<feTurbulence baseFrequency='0.1' numOctaves='1000000000'/>";
    EXPECT_FALSE(Image::fromBytes(
        svg("<filter id='f'>" + steps + "</filter><rect filter='url(#f)' width='100' height='100'/>"), box));
}

TEST(PictureProcess, ReferencesWithoutEndAreGivenUp)
{
    EXPECT_FALSE(Image::fromBytes(svg(manyTimes(9)), box));
}

TEST(PictureProcess, PictureInAPictureTakesNoMoreMemoryThanTheLimit)
{
    // A frame of 20,000 by 20,000 pixels, which exceeds the limit. The rest of the picture may be shown.
    const std::string frame("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\x20\x4E\x20\x4E\0\2\2D\1\0;", 35);
    gchar* const text = g_base64_encode(reinterpret_cast<const guchar*>(frame.data()), frame.size());
    const auto picture
        = svg(std::string("<image width='100' height='150' href='data:image/gif;base64,") + text + "'/>");
    g_free(text);
    const auto image = Image::fromBytes(picture, box);
    EXPECT_TRUE(!image || image->size() == (Size { 100, 150 }));
}

TEST(PictureProcess, BytesThatAreNoPictureAreNone)
{
    EXPECT_FALSE(decodePictureInHelper("<svg", box));
    EXPECT_FALSE(decodePictureInHelper("", box));
}

}
