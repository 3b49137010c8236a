#include "find/TextPattern.hpp"

#include <gtest/gtest.h>

using namespace pagora;

namespace {

// Returns the matches of the pattern: "match@start-end".
std::vector<std::string> found(std::string_view pattern, std::string_view text, WholeWords words = WholeWords::No)
{
    std::vector<std::string> result;
    TextPattern(pattern, words).search(text, [&](const TextMatch& match) {
        result.push_back(std::string(text.substr(match.firstByte, match.endByte - match.firstByte)) + "@"
            + std::to_string(match.start) + "-" + std::to_string(match.end));
        return true;
    });
    return result;
}

using Matches = std::vector<std::string>;

}

TEST(TextPattern, CountsPlacesWithoutBlanks)
{
    EXPECT_EQ(found("cd", "a b\ncd cd"), (Matches { "cd@2-4", "cd@4-6" }));
    EXPECT_EQ(found("b", "\U0001F600b"), (Matches { "b@2-3" }));
}

TEST(TextPattern, IgnoresCaseUnlessThePatternHasACapital)
{
    EXPECT_EQ(found("whale", "Whale WHALE"), (Matches { "Whale@0-5", "WHALE@5-10" }));
    EXPECT_EQ(found("Whale", "whale Whale"), (Matches { "Whale@5-10" }));
    EXPECT_EQ(found("strasse", "Straße"), (Matches { "Straße@0-6" }));
    EXPECT_EQ(found("οδος", "ΟΔΟΣ"), (Matches { "ΟΔΟΣ@0-4" }));
}

TEST(TextPattern, IgnoresAccentsUnlessThePatternHasOne)
{
    EXPECT_EQ(found("bronte", "Brontë Bronte\u0308"), (Matches { "Brontë@0-6", "Bronte\u0308@6-13" }));
    EXPECT_EQ(found("brontë", "Bronte Brontë Bronte\u0308"), (Matches { "Brontë@6-12", "Bronte\u0308@12-19" }));
    EXPECT_EQ(found("résume", "résumé résume"), (Matches { "résume@6-12" }));
    EXPECT_EQ(found("oeuvre smorrebrod", "œuvre smørrebrød"), (Matches { "œuvre smørrebrød@0-15" }));
}

TEST(TextPattern, FindsWhatIsWrittenWithLigaturesAndSoftHyphens)
{
    EXPECT_EQ(found("office", "o\uFB03ce"), (Matches { "o\uFB03ce@0-4" }));
    EXPECT_EQ(found("office", "of\u00ADfi\u200Bce"), (Matches { "of\u00ADfi\u200Bce@0-8" }));
}

TEST(TextPattern, TakesTypographicSignsForPlainOnes)
{
    EXPECT_EQ(found("don't \"go\"", "don’t\u00A0“go”"), (Matches { "don’t\u00A0“go”@0-10" }));
}

TEST(TextPattern, ReadsRightToLeftTextWithoutItsPoints)
{
    EXPECT_EQ(found("שלום", "שָׁלוֹם"), (Matches { "שָׁלוֹם@0-7" }));
    EXPECT_EQ(found("كتاب", "كِتَاب"), (Matches { "كِتَاب@0-6" }));
}

TEST(TextPattern, KeepsWhatTellsSyllablesApart)
{
    EXPECT_EQ(found("か", "が か\u3099"), Matches());
    EXPECT_EQ(found("가", "각"), Matches());
    EXPECT_EQ(found("कि", "के"), Matches());
    EXPECT_EQ(found("漢字", "一漢字二"), (Matches { "漢字@1-3" }));
}

TEST(TextPattern, DoesNotReachOverAParagraph)
{
    EXPECT_EQ(found("ab", "a\nb"), Matches());
    EXPECT_EQ(found("a b", "a\nb"), Matches());
}

TEST(TextPattern, FindsMatchesThatDoNotOverlap)
{
    EXPECT_EQ(found("aa", "aaaaa"), (Matches { "aa@0-2", "aa@2-4" }));
    EXPECT_EQ(found("aab", "aaab"), (Matches { "aab@1-4" }));
    EXPECT_EQ(found("abab", "ababab abab"), (Matches { "abab@0-4", "abab@6-10" }));
}

TEST(TextPattern, FindsWholeWordsAlone)
{
    EXPECT_EQ(found("cat", "cat concat cats cat's 'cat'", WholeWords::Yes), (Matches { "cat@0-3", "cat@19-22" }));
    EXPECT_EQ(found("漢", "漢字", WholeWords::Yes), (Matches { "漢@0-1" }));
    EXPECT_EQ(found("(a", "b(a", WholeWords::Yes), (Matches { "(a@1-3" }));
}

TEST(TextPattern, FindsNothingForWhatIsNeverSeen)
{
    EXPECT_TRUE(TextPattern("", WholeWords::No).isEmpty());
    EXPECT_TRUE(TextPattern(" \t", WholeWords::No).isEmpty());
    EXPECT_TRUE(TextPattern("\u00AD\u200B", WholeWords::No).isEmpty());
    EXPECT_EQ(found("", "abc"), Matches());
}

TEST(TextPattern, SearchesForAccentsAlone)
{
    EXPECT_EQ(found("\u0301", "cafe\u0301").size(), 1u);
}

TEST(TextPattern, TakesBytesThatAreNoText)
{
    EXPECT_EQ(found("a\xFF", "a\uFFFD"), (Matches { "a\uFFFD@0-2" }));
}

TEST(TextPattern, TakesPatternsOfTenThousandCharacters)
{
    const std::string pattern(10'000, 'a');
    EXPECT_EQ(found(pattern, std::string(100'000, 'a') + "b").size(), 10u);
    EXPECT_EQ(found(pattern + "b", std::string(100'000, 'a') + "b").size(), 1u);
}

TEST(TextPattern, EndsWhereItIsTold)
{
    int count = 0;
    TextPattern("a", WholeWords::No).search("aaaa", [&](const TextMatch&) { return ++count < 2; });
    EXPECT_EQ(count, 2);
}
