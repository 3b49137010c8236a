#include "catalogue/BookTexts.hpp"

#include <gtest/gtest.h>
#include <limits>

namespace pagora {

namespace {

BookInfo bookOfFourFiles()
{
    BookInfo book;
    book.setFilePaths(Value::Array { "/a", "/b", "/c", "/d" });
    return book;
}

}

TEST(BookTexts, TheTextsOfTheInspectionStandForNone)
{
    EXPECT_TRUE(standsForNone(std::nullopt));
    EXPECT_TRUE(standsForNone(""));
    EXPECT_TRUE(standsForNone("<unknown>"));
    EXPECT_TRUE(standsForNone("<not found>"));
    EXPECT_FALSE(standsForNone("The Unknown"));
}

TEST(BookTexts, UrnsSayLittle)
{
    EXPECT_TRUE(saysLittle("urn:uuid:1f0a"));
    EXPECT_TRUE(saysLittle("URN:ISBN:978"));
    EXPECT_TRUE(saysLittle("<unknown>"));
    EXPECT_FALSE(saysLittle("9780141439556"));
    EXPECT_FALSE(saysLittle("urn:"));
    EXPECT_FALSE(saysLittle("Urn Burial"));
}

TEST(ReadFraction, IsMissingForABookThatWasNotRead)
{
    EXPECT_EQ(readFraction(bookOfFourFiles()), std::nullopt);
}

TEST(ReadFraction, CountsWholeDocumentsAndThePlaceInTheLast)
{
    auto book = bookOfFourFiles();
    book.setLastIndex(1);
    EXPECT_EQ(readFraction(book), 0.25);
    book.setLastPlace(0.5);
    EXPECT_EQ(readFraction(book), 0.375);
}

TEST(ReadFraction, IsAtMostOne)
{
    auto book = bookOfFourFiles();
    book.setLastIndex(17);
    EXPECT_EQ(readFraction(book), 1.0);
    book.setLastIndex(3);
    book.setLastPlace(7.0);
    EXPECT_EQ(readFraction(book), 1.0);
}

TEST(ReadFraction, IsMissingForABookWithoutFiles)
{
    BookInfo book;
    book.setLastIndex(2);
    EXPECT_EQ(readFraction(book), std::nullopt);
}

TEST(ReadFraction, IgnoresAPlaceThatIsNoNumber)
{
    auto book = bookOfFourFiles();
    book.setLastPlace(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(readFraction(book), std::nullopt);
}

}
