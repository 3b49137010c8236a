#include "base/SearchText.hpp"

#include <gtest/gtest.h>

namespace pagora {

using Words = std::vector<std::string>;

TEST(SearchText, IgnoresCase)
{
    EXPECT_EQ(searchText("WUTHERING Heights"), "wuthering heights");
    EXPECT_EQ(searchText("ПРЕСТУПЛЕНИЕ"), searchText("преступление"));
    EXPECT_EQ(searchText("ΟΔΥΣΣΕΎΣ"), searchText("Οδυσσεύς"));
}

TEST(SearchText, IgnoresAccents)
{
    EXPECT_EQ(searchText("Brontë"), "bronte");
    EXPECT_EQ(searchText("Bront\u0065\u0308"), "bronte");
    EXPECT_EQ(searchText("Łódź, Jørgensen, Straße"), "lodz, jorgensen, strasse");
    EXPECT_EQ(searchText("שָׁלוֹם"), searchText("שלום"));
}

TEST(SearchText, KeepsMarksThatMakeAnotherLetter)
{
    EXPECT_NE(searchText("が"), searchText("か"));
}

TEST(SearchText, SpellsSyllablesInOneWay)
{
    EXPECT_EQ(searchText("\u1112\u1161\u11AB"), searchText("\uD55C"));
}

TEST(SearchText, TakesLigaturesAndFullWidthLettersApart)
{
    EXPECT_EQ(searchText("ﬁn de siècle Ｗ"), "fin de siecle w");
}

TEST(SearchText, WritesQuotesAndDashesAsKeyboardsDo)
{
    EXPECT_EQ(searchText("Alice’s “Looking–Glass”"), "alice's \"looking-glass\"");
}

TEST(SearchText, LeavesOutCharactersThatAreNotSeen)
{
    EXPECT_EQ(searchText("Bib\u00ADlio\u200Bthek"), "bibliothek");
}

TEST(SearchText, TakesBytesThatAreNotUtf8)
{
    EXPECT_EQ(searchText("Sea \xFF\xC3"), "sea \uFFFD\uFFFD");
    EXPECT_EQ(searchText(std::string("a\0é", 4)).substr(0, 1), "a");
}

TEST(SearchWords, AreTheLongestFirstAndOnceEach)
{
    EXPECT_EQ(searchWords("  The\tSEA the wind\u00A0 "), (Words { "wind", "sea", "the" }));
}

TEST(SearchWords, AreNoneForAPatternOfSpacesOrMarksAlone)
{
    EXPECT_TRUE(searchWords("").empty());
    EXPECT_TRUE(searchWords(" \t\n").empty());
    EXPECT_TRUE(searchWords("\u0301\u0308 \u200B").empty());
}

TEST(SearchWords, OfTenThousandCharactersAreAllThere)
{
    std::string pattern;
    for (int i = 0; i < 2'500; ++i)
        pattern += std::to_string(1'000 + i % 2'000) + (i % 2 == 0 ? " " : "\n");
    EXPECT_EQ(searchWords(pattern).size(), 2'000U);
    EXPECT_EQ(searchWords(std::string(10'000, 'x')), Words { std::string(10'000, 'x') });
}

TEST(SearchWords, TakeBytesThatAreNotUtf8)
{
    EXPECT_EQ(searchWords("sea \xFF").size(), 2U);
}

}
