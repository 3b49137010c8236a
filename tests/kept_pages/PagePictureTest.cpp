#include "kept_pages/PagePicture.hpp"

#include <gtest/gtest.h>
#include <random>

namespace pagora {

namespace {

constexpr const char* key = "the key";

// Returns a picture with that many colours, if it has enough pixels.
PagePicture pictureOf(int width, int height, int colors)
{
    PagePicture picture { width, height, 2, "engine 1", "rgb(1,2,3)", {} };
    for (int i = 0; i < width * height; ++i) {
        const int color = i % colors;
        for (const int part : { color % 251, color / 251, 7, 255 })
            picture.pixels += static_cast<char>(part);
    }
    return picture;
}

PagePicture noise(int width, int height)
{
    PagePicture picture { width, height, 1, {}, {}, {} };
    std::minstd_rand random(1);
    for (int i = 0; i < width * height * 4; ++i)
        picture.pixels += static_cast<char>(random() >> 8);
    return picture;
}

}

TEST(PagePicture, IsReadAsItWasWritten)
{
    for (const int colors : { 1, 2, 255, 256, 257, 3000 }) {
        const auto picture = pictureOf(80, 60, colors);
        const auto bytes = encodedPage(picture, key);
        ASSERT_TRUE(bytes) << colors;
        EXPECT_EQ(decodedPage(*bytes, key), picture) << colors;
    }
}

TEST(PagePicture, OfAnotherKeyIsNotRead)
{
    const auto bytes = encodedPage(pictureOf(8, 6, 3), key).value();
    EXPECT_FALSE(decodedPage(bytes, "the keys"));
    EXPECT_FALSE(decodedPage(bytes, "the ke"));
    EXPECT_FALSE(decodedPage(bytes, ""));
}

TEST(PagePicture, OfText1200PointsWideIsSmall)
{
    const auto bytes = encodedPage(pictureOf(1200, 800, 200), key);
    ASSERT_TRUE(bytes);
    EXPECT_LT(bytes->size(), maxPageFileBytes);
}

TEST(PagePicture, ThatTakesMoreThanAFilesLimitIsNotWritten)
{
    EXPECT_TRUE(encodedPage(noise(200, 300), key));
    EXPECT_FALSE(encodedPage(noise(300, 300), key));
}

TEST(PagePicture, WithMorePixelsThanTheLimitIsNotWritten)
{
    EXPECT_TRUE(encodedPage(pictureOf(3000, 2000, 1), key));
    EXPECT_FALSE(encodedPage(pictureOf(3001, 2000, 1), key));
}

TEST(PagePicture, WhosePixelsAreNotOfItsSizeIsNotWritten)
{
    auto picture = pictureOf(8, 6, 3);
    picture.height = 7;
    EXPECT_FALSE(encodedPage(picture, key));
    picture.height = -6;
    picture.width = -8;
    EXPECT_FALSE(encodedPage(picture, key));
}

TEST(PagePicture, CutAnywhereIsNotRead)
{
    const auto bytes = encodedPage(pictureOf(40, 30, 5), key).value();
    for (std::size_t end = 0; end < bytes.size(); ++end)
        ASSERT_FALSE(decodedPage(std::string_view(bytes).substr(0, end), key)) << end;
    EXPECT_FALSE(decodedPage(bytes + "x", key));
}

TEST(PagePicture, WithOneOfItsPixelsDamagedIsNotRead)
{
    const auto picture = pictureOf(40, 30, 300);
    const auto bytes = encodedPage(picture, key).value();
    const auto start = bytes.find("rgb(1,2,3)") + 10;
    for (std::size_t i = start; i < bytes.size(); ++i) {
        for (const int bit : { 1, 64 }) {
            auto damaged = bytes;
            damaged[i] = static_cast<char>(damaged[i] ^ bit);
            const auto read = decodedPage(damaged, key);
            ASSERT_TRUE(!read || read == picture) << i;
        }
    }
}

TEST(PagePicture, ThatDeclaresMoreThanTheLimitsIsNotRead)
{
    const auto head = [](const std::string& numbers) { return "pagora-page-1 " + numbers + "\nthe key"; };
    for (const auto* const numbers : { "60000 60000 1 0 7 0 0", "16385 1 1 0 7 0 0", "-4 -4 1 0 7 0 0", "0 9 1 0 7 0 0",
             "9 9 0 0 7 0 0", "9 9 1 257 7 0 0", "9 9 1 0 7 99999999999999999999 0", "9 9 1 0 7 18446744073709551615 1",
             "9 9 1 0 7 0", "99999999999 9 1 0 7 0 0", "x 9 1 0 7 0 0" })
        EXPECT_FALSE(decodedPage(head(numbers), key)) << numbers;
    EXPECT_FALSE(decodedPage(std::string(400'000, 'x'), key));
    EXPECT_FALSE(decodedPage("", ""));
    EXPECT_FALSE(decodedPage("PNG", ""));
}

// 6 megabytes of zeroes take 6 kB, so a stream may contain far more than its picture declares.
TEST(PagePicture, WhoseStreamHoldsMoreThanItDeclaresIsNotRead)
{
    auto bytes = encodedPage(pictureOf(3000, 2000, 1), key).value();
    const std::string size = " 3000 2000 ";
    bytes.replace(bytes.find(size), size.size(), " 30 20 ");
    EXPECT_FALSE(decodedPage(bytes, key));
}

TEST(PagePicture, OfRandomBytesIsHarmless)
{
    const auto bytes = encodedPage(pictureOf(60, 40, 50), key).value();
    std::minstd_rand random(7);
    for (int round = 0; round < 3000; ++round) {
        auto damaged = bytes;
        for (int i = 0; i < 4; ++i)
            damaged[random() % damaged.size()] = static_cast<char>(random() >> 8);
        const auto read = decodedPage(damaged, key);
        const auto pixels = read ? static_cast<std::size_t>(read->width) * static_cast<std::size_t>(read->height) : 0;
        EXPECT_EQ(read ? read->pixels.size() : 0, pixels * 4);
    }
}

}
