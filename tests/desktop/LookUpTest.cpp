#include "desktop/LookUp.hpp"

#include <gtest/gtest.h>

namespace pagora::test {

TEST(LookUp, TakesTheWordsInOneLine)
{
    EXPECT_EQ(wordsToLookUp("  a\tlamp\n\n lit \x01"), "a lamp lit");
}

TEST(LookUp, TakesNothingOfBlanks)
{
    EXPECT_EQ(wordsToLookUp(" \n\xC2\xA0\t"), "");
}

TEST(LookUp, TakesNoMoreThanTwoHundredCharacters)
{
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "é";
    EXPECT_EQ(wordsToLookUp(text), text.substr(0, 400));
}

TEST(LookUp, ReplacesBytesThatAreNoText)
{
    EXPECT_EQ(wordsToLookUp("a\xFF"), "a\xEF\xBF\xBD");
}

TEST(LookUp, SearchesTheWebForEscapedWords)
{
    EXPECT_EQ(webSearch("a lamp").text(), std::string(webSearchAddress) + "a%20lamp");
    EXPECT_EQ(webSearch("x&q=y#z/é?\"%<").text(), std::string(webSearchAddress) + "x%26q%3Dy%23z%2F%C3%A9%3F%22%25%3C");
}

}
